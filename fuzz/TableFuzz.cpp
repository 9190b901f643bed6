#include "ombrel/table/TableReader.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

using namespace ombrel;

bool IsSameColumn(TableColumn const& a, TableColumn const& b)
{
    if (a.name != b.name || a.type != b.type || a.gaps != b.gaps || a.misfit != b.misfit
        || a.values.Size() != b.values.Size() || a.texts != b.texts || a.firstText != b.firstText)
        return false;
    std::vector<double> values;
    a.values.ForEach([&values](double v) { values.push_back(v); });
    std::size_t i = 0;
    bool same = true;
    // As bytes, since a gap is not equal to itself.
    b.values.ForEach([&](double v) { same = std::memcmp(&v, &values[i++], sizeof v) == 0 && same; });
    return same;
}

bool IsSameResult(std::variant<Table, TableError> const& a, std::variant<Table, TableError> const& b)
{
    if (a.index() != b.index())
        return false;
    if (auto const* const error = std::get_if<TableError>(&a))
        return *error == std::get<TableError>(b);
    Table const& s = std::get<Table>(a);
    Table const& t = std::get<Table>(b);
    if (s.rows != t.rows || s.shortRows != t.shortRows || s.columns.size() != t.columns.size())
        return false;
    for (std::size_t i = 0; i < s.columns.size(); ++i) {
        if (!IsSameColumn(s.columns[i], t.columns[i]))
            return false;
    }
    return true;
}

} // namespace

/// The first byte chooses options and the size of the pieces; the rest is the table, read whole and in pieces, which
/// must give the same.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0)
        return 0;
    unsigned const choice = data[0];
    std::string_view const text(reinterpret_cast<char const*>(data) + 1, size - 1);
    TableOptions options;
    if (choice & 0x80)
        options.dateFormat = std::get<DateFormat>(DateFormat::Compile("%d.%m.%Y %H:%M"));
    if (choice & 0x40) {
        options.wanted = { "3", "b" };
        options.leading = 2;
        options.asTexts = { "a" };
    }
    options.header = static_cast<HeaderChoice>((choice >> 4 & 3) % 3);
    std::size_t const piece = 1 + (choice & 15);
    TableReader reader(options);
    for (std::size_t i = 0; i < text.size() && reader.Feed(text.substr(i, piece)); i += piece) { }
    if (!IsSameResult(reader.Finish(), ReadTable(text, options)))
        std::abort();
    return 0;
}
