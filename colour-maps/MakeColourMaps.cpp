// MakeColourMaps FOLDER TABLE...: writes each table of colours (NAME.csv) as a colour map file FOLDER/NAME.ombrelmap.

#include "ombrel/colour/ColourMap.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace ombrel;

using Colour = std::array<BYTE, CColourMap::kChannels>;

/// Three numbers 0 … 255 with commas between.
Colour ParseColour(std::string const& line)
{
    Colour colour {};
    char const* p = line.data();
    char const* const end = p + line.size();
    for (std::size_t c = 0; c < colour.size(); ++c) {
        if (c > 0 && p != end && *p == ',')
            ++p;
        auto const [next, error] = std::from_chars(p, end, colour[c]);
        if (error != std::errc())
            throw std::runtime_error("expected red,green,blue, each 0 to 255, found \"" + line + "\"");
        p = next;
    }
    if (p != end)
        throw std::runtime_error("expected three numbers, found \"" + line + "\"");
    return colour;
}

std::vector<Colour> ReadColours(std::filesystem::path const& path)
{
    std::ifstream stream(path);
    std::string line;
    if (!std::getline(stream, line) || line != "red,green,blue")
        throw std::runtime_error("expected the heading red,green,blue");
    std::vector<Colour> colours;
    while (std::getline(stream, line))
        colours.push_back(ParseColour(line));
    if (colours.size() < 2)
        throw std::runtime_error("expected at least two colours");
    return colours;
}

/// One control point a colour, so that every published figure is met.
CColourMap MakeMap(std::vector<Colour> const& colours, std::string const& name)
{
    CDoubleArray positions;
    std::array<CByteArray, CColourMap::kChannels> values;
    for (std::size_t i = 0; i < colours.size(); ++i) {
        positions.Add(static_cast<double>(i) / static_cast<double>(colours.size() - 1));
        for (std::size_t c = 0; c < values.size(); ++c)
            values[c].Add(colours[i][c]);
    }
    CColourMap map;
    map.SetName(CString(name));
    for (int c = 0; c < CColourMap::kChannels; ++c)
        map.SetChannel(c, positions, values[static_cast<std::size_t>(c)]);
    map.Update();
    return map;
}

} // namespace

int main(int argc, char** argv)
{
    std::string table;
    try {
        if (argc < 3)
            throw std::runtime_error("expected FOLDER TABLE...");
        std::filesystem::path const folder = argv[1];
        for (int i = 2; i < argc; ++i) {
            table = argv[i];
            std::string const name = std::filesystem::path(table).stem().string();
            CColourMap map = MakeMap(ReadColours(table), name);
            if (!map.Save(CString((folder / (name + ".ombrelmap")).string())))
                throw std::runtime_error("the map cannot be written");
        }
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "MakeColourMaps: %s: %s\n", table.c_str(), error.what());
        return 1;
    }
}
