#include "ombrel/Init.h"
#include "tests/tools/TestFolder.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/Program.h"
#include "tools/ombrel/gallery/Drawing.h"
#include "tools/ombrel/gallery/Page.h"
#include "tools/ombrel/gallery/Sources.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

namespace ombrel::host {
namespace {

class Gallery : public testing::Test {
protected:
    Gallery() { OmbrelInit(); }
    std::string In(std::string const& name) const { return m_folder.In(name); }
    std::map<std::string, std::string> Files(std::string const& folder) const
    {
        std::map<std::string, std::string> files;
        for (std::string const& name : m_folder.List(folder))
            files[name] = m_folder.Read(folder + "/" + name);
        return files;
    }
    /// The values of an attribute in a page.
    static std::set<std::string> Values(std::string const& page, std::string const& attribute)
    {
        std::set<std::string> values;
        std::string const start = " " + attribute + "=\"";
        for (std::size_t at = page.find(start); at != std::string::npos; at = page.find(start, at + 1)) {
            std::size_t const begin = at + start.size();
            values.insert(page.substr(begin, page.find('"', begin) - begin));
        }
        return values;
    }

    TestFolder m_folder;
};

TEST_F(Gallery, DrawsEveryPictureAndAPageThatShowsThem)
{
    ASSERT_EQ(RunProgram({ "gallery", In("a/b") }), kDone);
    auto files = Files("a/b");
    std::string const page = files["index.html"];
    std::set<std::string> const anchors = Values(page, "id");
    std::set<std::string> shown = Values(page, "src");
    shown.merge(Values(page, "href"));
    for (std::string const& set : Values(page, "srcset")) {
        std::istringstream sources(set);
        for (std::string file; std::getline(sources >> std::ws, file, ',');)
            shown.insert(file.substr(0, file.find(' ')));
    }
    for (std::string const& link : shown)
        EXPECT_TRUE(link[0] == '#' ? anchors.contains(link.substr(1)) : files.contains(link)) << link;
    for (auto const& [name, bytes] : files)
        EXPECT_TRUE(name == "index.html" || shown.contains(name)) << name;
    EXPECT_FALSE(Values(page, "alt").contains(""));
    std::set<std::string_view> names;
    for (GalleryPicture const& picture : AllGalleryPictures()) {
        EXPECT_TRUE(names.insert(picture.name).second) << picture.name << " is there twice";
        std::string const program = files[std::string(picture.name) + ".cpp"];
        EXPECT_NE(program.find(".Save(\"" + std::string(picture.name) + ".png\");\n}"), std::string::npos)
            << picture.name;
    }
    EXPECT_EQ(files.size(), names.size() * 7 + 2);
}

TEST_F(Gallery, FillsEveryPictureWithoutTouchingItsEdge)
{
    // The bytes of a bitmap file after its header of 54: rows of blue, green and red, filled up to four bytes.
    constexpr std::size_t kHeader = 54;
    PictureForm form;
    form.format = PictureFormat::Bmp;
    for (PictureSize const size : { kSmallPicture, kLargePicture }) {
        form.size = size;
        auto const width = static_cast<std::size_t>(size.width);
        auto const height = static_cast<std::size_t>(size.height);
        std::size_t const stride = (width * 3 + 3) / 4 * 4;
        for (GalleryPicture const& picture : AllGalleryPictures()) {
            std::string const file = MakeGalleryPicture(picture, Theme::Dark)->Encode(form);
            ASSERT_EQ(file.size(), kHeader + stride * height);
            auto const pixel = [&](std::size_t x, std::size_t y) {
                return std::string_view(file).substr(kHeader + y * stride + x * 3, 3);
            };
            std::string_view const ground = pixel(0, 0);
            bool const isLight = picture.theme.value_or(Theme::Dark) != Theme::Dark;
            EXPECT_EQ(ground == "\xFF\xFF\xFF", isLight) << picture.name;
            SCOPED_TRACE(testing::Message() << picture.name << " at " << width << " pixels");
            std::size_t ink = 0;
            for (std::size_t y = 0; y < height; ++y) {
                for (std::size_t x = 0; x < width; ++x) {
                    bool const isEdge = x == 0 || y == 0 || x + 1 == width || y + 1 == height;
                    ink += pixel(x, y) != ground;
                    ASSERT_TRUE(!isEdge || pixel(x, y) == ground) << x << ", " << y;
                }
            }
            EXPECT_GT(ink, width * height / 60);
        }
    }
}

TEST_F(Gallery, TellsWhatIsWrongByItsStatus)
{
    m_folder.Write("file", "x");
    std::pair<std::vector<std::string>, ExitStatus> const cases[] {
        { { "gallery" }, kUsageFault },
        { { "gallery", In("a"), In("b") }, kUsageFault },
        { { "gallery", In("file/below") }, kDataFault },
        { { "gallery", In("file") }, kDataFault },
    };
    for (auto const& [arguments, status] : cases)
        EXPECT_EQ(RunProgram(arguments), status);
    EXPECT_EQ(m_folder.List().size(), 1U);
}

} // namespace
} // namespace ombrel::host
