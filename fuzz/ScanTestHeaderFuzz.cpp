// Reads any bytes as the head of a scan test: what comes of it stores, loads and stores the same.

#include "fuzz/MemoryFile.h"
#include "ombrel/io/ScanTestHeader.h"
#include "ombrel/platform/framework/Archive.h"
#include "ombrel/platform/framework/Exception.h"

using namespace ombrel;
using namespace ombrel::fuzz;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static MemoryFile file;
    file.Fill(data, size);
    CStdioFile text(file.GetPath(), CFile::modeRead);
    CScanTestHeader header;
    header.Read(text);
    std::vector<std::byte> const stored = Stored(header);
    CScanTestHeader copy;
    CArchive archive { std::span<std::byte const>(stored) };
    copy.Serialize(archive);
    Require(Stored(copy) == stored);

    CArchive any { std::as_bytes(std::span(data, size)) };
    (void)Succeeds([&] { copy.Serialize(any); });
    return 0;
}
