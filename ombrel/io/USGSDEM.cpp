#include "ombrel/io/USGSDEM.h"
#include "ombrel/io/reading/DEMReader.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <cstring>
#include <memory>

namespace ombrel {

constinit CRuntimeClass const CUSGSDEM::kClass = PersistentClass<CUSGSDEM, CObject>("CUSGSDEM");

int CUSGSDEM::SetPathname(CString const& path)
{
    if (path.CompareNoCase(m_pathName) == 0) {
        if (m_loaded)
            return 1;
    } else {
        m_loaded = 0;
    }
    m_pathName = path;
    return Load();
}

int CUSGSDEM::Load()
{
    m_elevations = {};
    m_loaded = 0;
    std::string const path = m_pathName.ToUtf8();
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    // A path with a zero in it names no file.
    std::unique_ptr<std::FILE, Closer> const file(
        path.find('\0') == std::string::npos ? std::fopen(path.c_str(), "re") : nullptr);
    if (!file)
        return 0;
    ReadAscii(file.get(), 0);
    m_loaded = 1;
    return 1;
}

void CUSGSDEM::ReadAscii(std::FILE* file, int headerOnly)
{
    io::DEMRecords records(file, m_pathName);
    DEMHeader header = io::ReadDEMHeader(records);
    if (headerOnly == 0) {
        io::DEMElevations elevations = io::ReadDEMProfiles(records, header);
        m_elevations = std::move(elevations.cells);
        m_blank = elevations.blank;
        m_damaged = elevations.damaged;
    }
    m_header = header;
}

void CUSGSDEM::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    f.String(m_pathName).Int(m_loaded);
    if (ar.IsStoring())
        ar.Write(&m_header, sizeof m_header);
    else
        ar.Read(&m_header, sizeof m_header);
    SerializeElevations(ar);
}

void CUSGSDEM::SerializeElevations(CArchive& ar)
{
    // As many bytes as there are elevations of two bytes: half of them. Documents have always been so.
    LONG count = static_cast<LONG>(m_elevations.size());
    if (ar.IsStoring()) {
        ar << count;
        ar.Write(m_elevations.data(), m_elevations.size());
        return;
    }
    m_elevations = {};
    m_blank = 0;
    m_damaged = 0;
    ar >> count;
    auto const bytes = static_cast<std::size_t>(std::max<LONG>(count, 0));
    ar.RequireRemaining(bytes, 1, "the elevations of a model");
    std::vector<std::int16_t> elevations(bytes, kFillValue);
    ar.Read(elevations.data(), bytes);
    // Elevations of another grid than the header's are nobody's.
    auto const rows = static_cast<std::size_t>(GetNumRows());
    auto const cols = static_cast<std::size_t>(GetNumCols());
    if (rows * cols == bytes)
        m_elevations = std::move(elevations);
    else
        m_loaded = 0;
}

} // namespace ombrel
