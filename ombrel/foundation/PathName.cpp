#include "ombrel/foundation/PathName.h"

namespace ombrel {

namespace {

constexpr std::size_t kMaxPath = 260;
constexpr std::size_t kMaxPart = 255;

} // namespace

CPathName::CPathName(CString const& path)
    : CString(path)
{
    Reset();
}

void CPathName::Reset()
{
    std::u16string_view rest = View().substr(0, kMaxPath);
    auto const take = [&rest](std::size_t count) {
        CString part(rest.substr(0, std::min(count, kMaxPart)));
        rest.remove_prefix(count);
        return part;
    };
    m_drive = take(rest.size() >= 2 && rest[1] == u':' ? 2 : 0);
    std::size_t const separator = rest.find_last_of(u"\\/");
    m_directory = take(separator == rest.npos ? 0 : separator + 1);
    std::size_t const dot = rest.rfind(u'.');
    m_fileName = take(std::min(dot, rest.size()));
    m_extension = take(rest.size());
}

CString CPathName::GetDirectory() const
{
    CString directory = m_directory;
    directory.Remove(u'\\');
    return directory;
}

} // namespace ombrel
