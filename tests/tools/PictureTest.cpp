#include "ombrel/Init.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/platform/gdi/DC.h"
#include "tests/platform/gdi/Recorded.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/commands/PlotCommand.h"
#include "tools/ombrel/commands/SceneOptions.h"
#include "tools/ombrel/gallery/Drawing.h"
#include "tools/ombrel/options/Options.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <map>
#include <sstream>

namespace ombrel::host {
namespace {

namespace fs = std::filesystem;

/// Where a table of pictures lies with the data that they are drawn from.
fs::path const kFolder = OMBREL_SOURCE_DIR "/tests/tools/pictures";
/// Where what was found goes when it is not what the table says.
fs::path const kFound = OMBREL_BINARY_DIR "/tests/pictures";

/// A picture in text: the primitives of a draw on a screen, their pixels but for texts, which are FreeType's, the file
/// of a page, and what the user was told.
struct Structure {
    std::string screen;
    std::string pixels;
    std::string page;
    std::string told;
};

/// FNV-1a.
std::string SumOf(std::string const& text)
{
    std::uint32_t sum = 0x811C9DC5;
    for (char const c : text)
        sum = (sum ^ static_cast<unsigned char>(c)) * 0x01000193;
    std::ostringstream stream;
    stream << std::hex << std::setw(8) << std::setfill('0') << sum;
    return stream.str();
}

/// The structure of what draw(target, picture, context) draws for a picture, on a screen and on a page.
template <typename Draw> Structure StructureOf(PictureSize size, Draw const& draw)
{
    Target screenTarget;
    screenTarget.size = size;
    Target pageTarget;
    pageTarget.format = PictureFormat::Svg;
    Picture screen(screenTarget);
    Picture page(pageTarget);
    Structure s;
    testing::internal::CaptureStderr();
    try {
        auto const surface = std::make_shared<RecordingSurface>(CSize(size.width, size.height));
        CDC dc(surface);
        draw(screenTarget, screen, dc);
        s.screen = test::Dump(surface->Primitives());
        auto const raster = std::make_shared<Raster>(size.width, size.height, 24);
        auto const bitmap = MakeRasterSurface(raster);
        for (RecordedPrimitive const& p : surface->Primitives()) {
            if (!p.As<primitive::Text>())
                Replay(p, CPoint(), *bitmap, p.clip);
        }
        s.pixels.assign(
            reinterpret_cast<char const*>(raster->Row(0)), reinterpret_cast<char const*>(raster->Row(size.height)));
        // The sums are of what is seen, not of what is said about it.
        draw(pageTarget, page, page.GetDC());
        s.page = page.Encode();
    } catch (Failure const& failure) {
        s.told = failure.what();
    }
    s.told += testing::internal::GetCapturedStderr();
    return s;
}

Structure StructureOf(std::string const& command)
{
    std::istringstream stream(command);
    Options const options = ParseOptions({ std::istream_iterator<std::string>(stream), {} });
    auto const make = [&](Picture& picture) -> std::unique_ptr<CAnnotatedGraph> {
        Messages const messages(true);
        std::vector<std::unique_ptr<InputFile>> files;
        for (std::string const& path : options.files)
            files.push_back(std::make_unique<InputFile>(path));
        if (options.command != Command::Contour)
            return MakePlot(options, files, picture, messages);
        ContourMap map = MapFor(options, ReadHeightFile(options, *files.front(), HeightShape::Grid, messages));
        NotesTeller const notes([notes = map.Notes()] { return notes; }, messages);
        map.LayOut(picture.GetDC(), picture.GetRect());
        return std::move(map).TakeGraph();
    };
    return StructureOf(options.size.value_or(PictureSize()),
        [&](Target const&, Picture& picture, CDC& dc) { make(picture)->Draw(&dc, picture.GetRect(), pmDirect); });
}

Structure StructureOf(GalleryPicture const& picture)
{
    return StructureOf(kSmallPicture, [&](Target const& target, Picture& on, CDC& dc) {
        auto const drawing = MakeGalleryPicture(picture, target.IsPage() ? Theme::Dark : Theme::Light);
        drawing->LayOut(on.GetDC(), on.GetRect());
        drawing->Draw(dc, on.GetRect());
    });
}

/// A line of the table holds the sums of three texts, which are what is drawn on a screen, what the file of a page
/// holds and what the user is told, and the command or picture that they are of. The texts of lines that differ are
/// left in the build folder, for comparing them with those of an earlier build. When what has changed is as it should
/// be, and the pictures have been looked at, the table that is left there, too, takes the place of the old one.
TEST(Pictures, AreWhatTheyWereWhenTheyWereLastLookedAt)
{
    OmbrelInit();
    std::string found;
    bool differs = false;
    auto const compare = [&](std::string const& line, std::string const& name, Structure const& s) {
        std::string const now
            = SumOf(s.screen) + ' ' + SumOf(s.pixels) + ' ' + SumOf(s.page) + ' ' + SumOf(s.told) + ' ' + name;
        found += now + '\n';
        EXPECT_EQ(now, line);
        if (now == line)
            return;
        differs = true;
        fs::create_directories(kFound);
        std::string file = name;
        std::replace(file.begin(), file.end(), '/', '_');
        std::ofstream(kFound / (file + ".txt")) << s.screen << s.told;
        std::ofstream(kFound / (file + ".svg")) << s.page;
    };

    std::string const galleryWord = "gallery ";
    constexpr std::size_t kSums = 36;
    std::map<std::string, std::string> galleryLines;
    fs::path const before = fs::current_path();
    fs::current_path(kFolder);
    std::ifstream table("pictures.txt");
    for (std::string line; std::getline(table, line);) {
        std::string const name = line.substr(std::min(kSums, line.size()));
        if (name.starts_with(galleryWord))
            galleryLines[name] = line;
        else
            compare(line, name, StructureOf(name));
    }
    fs::current_path(before);
    for (GalleryPicture const& picture : AllGalleryPictures()) {
        std::string const name = galleryWord + std::string(picture.name);
        // What OpenGL draws need not be the same everywhere.
        if (!picture.IsScene())
            compare(galleryLines[name], name, StructureOf(picture));
    }
    if (differs) {
        std::ofstream(kFound / "pictures.txt") << found;
        ADD_FAILURE() << "the texts and the table are in " << kFound;
    }
}

} // namespace
} // namespace ombrel::host
