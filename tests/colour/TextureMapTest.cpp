#include "ombrel/colour/TextureMap.h"
#include "ombrel/platform/host/Host.h"
#include "tests/io/DataFile.h"
#include "tests/model/ArchiveBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace ombrel {
namespace {

using test::Bytes;
using test::DataFile;
using testing::ElementsAre;
using testing::ElementsAreArray;

std::string Number(std::int64_t value, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i));
    return text;
}

/// A bitmap file, field by field.
struct Bitmap {
    int width = 0;
    int height = 0;
    int bits = 24;
    int compression = 0;
    /// Of the information header.
    int headerSize = 40;
    std::string colours {};
    std::string pixels {};
    /// Where the pixels are said to be; 0 for where they are.
    std::int64_t offset = 0;

    std::string Text() const
    {
        std::int64_t const at = offset ? offset : 14 + headerSize + static_cast<std::int64_t>(colours.size());
        std::string text = "BM" + Number(0, 8) + Number(at, 4) + Number(headerSize, 4) + Number(width, 4);
        text += Number(height, 4) + Number(1, 2) + Number(bits, 2) + Number(compression, 4);
        text.resize(14 + static_cast<std::size_t>(headerSize));
        return text + colours + pixels;
    }
};

/// 24 bits: every texel has its column as red, its row as green and 9 as blue.
Bitmap Numbered(int width, int height)
{
    Bitmap bitmap { .width = width, .height = height };
    for (int r = 0; r < height; ++r) {
        for (int c = 0; c < width; ++c)
            bitmap.pixels += Number(9 + r * 256 + c * 65536, 3);
        bitmap.pixels.resize((bitmap.pixels.size() + 3) / 4 * 4);
    }
    return bitmap;
}

struct Loaded {
    CTextureMap map;
    /// What the message box said, and what was thrown.
    CString box;
    CRuntimeClass const* thrown = nullptr;
    CString message;
};

void Load(std::string const& file, TextureMapParams params, Loaded& loaded)
{
    DataFile const data("picture.bmp", file);
    params.fileName = data.GetPath();
    loaded.map.SetParams(params);
    SetMessageBoxFunction([&](CString const& text, CString const&, UINT) { loaded.box = text; });
    try {
        EXPECT_EQ(loaded.map.Create(), 1);
        EXPECT_EQ(loaded.map.GetReloadNeeded(), 0);
    } catch (CException* e) {
        loaded.thrown = &e->GetRuntimeClass();
        loaded.message = e->GetErrorMessage();
        EXPECT_EQ(loaded.map.GetReloadNeeded(), 1);
        e->Delete();
    }
    SetMessageBoxFunction(nullptr);
}

std::vector<int> Texels(CTextureMap const& map) { return { map.GetTexels().begin(), map.GetTexels().end() }; }

TEST(TextureMap, ReadsTheLowestRowFirstWithTheOpacity)
{
    // Rows of 2 × 3 bytes are filled up to 8.
    Bitmap bitmap = Numbered(2, 2);
    for (double const opacity : { 0.5, 1.0, -1.0, 7.0 }) {
        Loaded loaded;
        Load(bitmap.Text(), { .opacity = opacity }, loaded);
        int const a = opacity == 0.5 ? 128 : opacity < 0.0 ? 0 : 255;
        EXPECT_THAT(Texels(loaded.map), ElementsAre(0, 0, 9, a, 1, 0, 9, a, 0, 1, 9, a, 1, 1, 9, a));
        EXPECT_EQ(loaded.map.GetSize(), CSize(2, 2));
    }
    // The same file with its rows from the top down is the picture upside down.
    bitmap.height = -2;
    Loaded loaded;
    Load(bitmap.Text(), {}, loaded);
    EXPECT_THAT(Texels(loaded.map), ElementsAre(0, 1, 9, 255, 1, 1, 9, 255, 0, 0, 9, 255, 1, 0, 9, 255));
}

TEST(TextureMap, TakesColoursFromTheTableBehindTheHeaderOfAnyLength)
{
    for (int const headerSize : { 40, 108, 124 }) {
        Bitmap const bitmap { .width = 3,
            .height = 1,
            .bits = 8,
            .headerSize = headerSize,
            .colours = Number(0x11223344, 4) + Number(0x55667788, 4),
            .pixels = Number(0x00020100, 4) };
        Loaded loaded;
        Load(bitmap.Text(), {}, loaded);
        // The third colour is not in the table.
        EXPECT_THAT(Texels(loaded.map), ElementsAre(0x22, 0x33, 0x44, 255, 0x66, 0x77, 0x88, 255, 0, 0, 0, 255));
    }
}

TEST(TextureMap, UsesThePartBetweenTheFractionsAndNothingOutside)
{
    struct Case {
        double start, end;
        int first, count;
    };
    Case const cases[] = {
        { 0.25, 0.75, 25, 50 },
        { 0.0, 1.0, 0, 100 },
        { 0.255, 1.0, 26, 74 }, // 75 columns, if it did not end there
        { 0.5, 3.0, 50, 50 },
        { -0.5, 0.5, 0, 50 },
        { -5.0, 5.0, 0, 100 },
        { 0.75, 0.25, 0, 0 },
        { 2.0, 3.0, 0, 0 },
        { std::nan(""), 0.5, 0, 0 },
        { 1e300, -1e300, 0, 0 },
    };
    std::string const wide = Numbered(100, 1).Text();
    std::string const high = Numbered(1, 100).Text();
    for (Case const& c : cases) {
        Loaded x;
        Load(wide, { .imageXStart = c.start, .imageXEnd = c.end }, x);
        Loaded y;
        Load(high, { .imageYStart = c.start, .imageYEnd = c.end }, y);
        EXPECT_EQ(x.map.GetSize(), CSize(c.count, c.count > 0 ? 1 : 0)) << c.start << " " << c.end;
        EXPECT_EQ(y.map.GetSize(), CSize(c.count > 0 ? 1 : 0, c.count)) << c.start << " " << c.end;
        ASSERT_EQ(x.map.GetTexels().size(), 4u * static_cast<unsigned>(c.count));
        if (c.count > 0) {
            EXPECT_EQ(x.map.GetTexels()[0], c.first);
            EXPECT_EQ(y.map.GetTexels()[1], c.first);
        }
    }
}

TEST(TextureMap, FilesOfOtherKindsAreToldAbout)
{
    constexpr char kEnd[] = "Unexpected end of file reached in texture map file.";
    constexpr char kKind[] = "Texture map file must be a Windows bmp file.";
    constexpr char kPixels[]
        = "Texture map file must be a 24 bits per pixel or\n8 bits per pixel (256 colour) Windows bmp file.";
    auto const with = [](std::function<void(Bitmap&)> const& change) {
        Bitmap bitmap = Numbered(2, 2);
        change(bitmap);
        return bitmap.Text();
    };
    std::string const whole = Numbered(2, 2).Text();
    struct Case {
        std::string file;
        char const* message;
        bool inBox;
    };
    constexpr int kMost = std::numeric_limits<int>::max();
    Case const cases[] = {
        { "", kEnd, false },
        { whole.substr(0, 13), kEnd, false },
        { "MB" + whole.substr(2), kKind, false },
        { whole.substr(0, 53), kEnd, true },
        { whole.substr(0, whole.size() - 1), kEnd, true },
        { with([](Bitmap& b) { b.offset = 20; }), kEnd, true },
        { with([](Bitmap& b) { b.offset = 3; }), kEnd, true },
        { with([](Bitmap& b) { b.offset = 0xFFFFFFFF; }), kEnd, true },
        { with([](Bitmap& b) { b.headerSize = 12; }), kEnd, true },
        { with([](Bitmap& b) { b.width = b.height = kMost; }), kEnd, true },
        { with([](Bitmap& b) { b.height = std::numeric_limits<int>::min(); }), kEnd, true },
        { with([](Bitmap& b) { b.bits = 32; }), kPixels, true },
        { with([](Bitmap& b) { b.bits = 4; }), kPixels, true },
        { with([](Bitmap& b) { b.compression = 1; }), kPixels, true },
        { with([](Bitmap& b) { b.width = -2; }), kKind, false },
        { with([](Bitmap& b) { b.height = 0; }), kKind, false },
    };
    for (Case const& c : cases) {
        Loaded loaded;
        Load(whole, {}, loaded);
        ASSERT_EQ(loaded.thrown, nullptr);
        Load(c.file, {}, loaded);
        EXPECT_EQ(loaded.message, c.message);
        EXPECT_EQ(loaded.box, c.inBox ? CString(c.message) : CString());
        ASSERT_NE(loaded.thrown, nullptr) << c.message;
        EXPECT_STREQ(loaded.thrown->name, c.inBox ? "CUserException" : "CVFileException");
    }
    CTextureMap map;
    map.SetParams(TextureMapParams { .fileName = "/nowhere/picture.bmp" });
    try {
        map.Create();
        FAIL();
    } catch (CFileException* e) {
        EXPECT_EQ(e->m_cause, CFileException::fileNotFound);
        e->Delete();
    }
}

TEST(TextureMap, APixelReadThatEndsTooEarlyLeavesNoImage)
{
    Loaded loaded;
    std::string const whole = Numbered(2, 2).Text();
    Load(whole, {}, loaded);
    Load(whole.substr(0, whole.size() - 1), {}, loaded);
    EXPECT_EQ(loaded.map.GetSize(), CSize(0, 0));
    EXPECT_TRUE(loaded.map.GetTexels().empty());
}

TEST(TextureMap, OnlyWhatChangesTheImageNeedsIt)
{
    struct Case {
        char const* what;
        std::function<void(TextureMapParams&)> change;
        int reload;
    };
    Case const cases[] = {
        { "file", [](TextureMapParams& p) { p.fileName = "b"; }, 1 },
        { "left", [](TextureMapParams& p) { p.imageXStart = 0.1; }, 1 },
        { "right", [](TextureMapParams& p) { p.imageXEnd = 0.1; }, 1 },
        { "bottom", [](TextureMapParams& p) { p.imageYStart = 0.1; }, 1 },
        { "top", [](TextureMapParams& p) { p.imageYEnd = 0.1; }, 1 },
        { "opacity", [](TextureMapParams& p) { p.opacity = 0.1; }, 1 },
        { "range", [](TextureMapParams& p) { p.xMin = p.xMax = p.yMin = p.yMax = 3; }, 0 },
        { "nothing", [](TextureMapParams&) {}, 0 },
    };
    for (Case const& c : cases) {
        CTextureMap map;
        EXPECT_EQ(map.GetReloadNeeded(), 1);
        BYTE const texel[4] = { 1, 2, 3, 4 };
        EXPECT_EQ(map.SetTexels(CSize(1, 2), texel), 0) << "too few";
        EXPECT_EQ(map.SetTexels(CSize(1, 1), texel), 1);
        EXPECT_EQ(map.GetReloadNeeded(), 0);
        TextureMapParams params = map.GetParams();
        c.change(params);
        CTextureMap other;
        other.SetParams(params);
        map.SetParams(other);
        EXPECT_EQ(map.GetReloadNeeded(), c.reload) << c.what;
        EXPECT_THAT(Texels(map), ElementsAre(1, 2, 3, 4)) << "the image stays until it is read again";
    }
}

TEST(TextureMap, SidesBecomePowersOfTwoWithinTheLimit)
{
    struct Case {
        CSize size;
        int limit;
        CSize scaled;
    };
    Case const cases[] = { { { 300, 200 }, 8192, { 512, 256 } }, { { 1024, 1024 }, 8192, { 1024, 1024 } },
        { { 2048, 512 }, 8192, { 1024, 512 } }, { { 1, 3 }, 1024, { 1, 4 } }, { { 300, 200 }, 256, { 256, 256 } } };
    for (Case const& c : cases)
        EXPECT_EQ(CTextureMap::GetScaledSize(c.size, c.limit), c.scaled) << c.size.cx;

    struct Scaler : TextureScaler {
        int GetMaxSize() override { return 8192; }
        void Scale(CSize size, BYTE const* from, CSize, BYTE* to) override
        {
            // Its own kind of scaling: the first texel everywhere that is asked about.
            EXPECT_EQ(size, CSize(3, 1));
            std::copy_n(from, 4, to + 12);
        }
    } scaler;
    std::vector<BYTE> texels { 1, 2, 3, 4, 0, 0, 0, 0, 0, 0, 0, 0 };
    CTextureMap map;
    map.SetTexels(CSize(3, 1), texels);
    EXPECT_EQ(map.ScalePow2(), 0) << "nobody to scale";
    map.SetScaler(&scaler);
    map.SetTexels(CSize(3, 1), texels);
    EXPECT_EQ(map.GetSize(), CSize(4, 1));
    EXPECT_THAT(Texels(map), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4));
    EXPECT_EQ(map.ScalePow2(), 1);
}

TEST(TextureMap, CoordinatesRunOverTheDataRange)
{
    struct Case {
        double x, y;
        CTextureMap::Rows rows;
        double s, t;
        int isOn;
    };
    using enum CTextureMap::Rows;
    Case const cases[] = { { -10, 0, Up, 0, 0, 1 }, { 10, 5, Up, 1, 1, 1 }, { 0, 1, Up, 0.5, 0.2, 1 },
        { 0, 1, Down, 0.5, 0.8, 1 }, { 10.5, 1, Up, 1.025, 0.2, 0 }, { 0, -1, Up, 0.5, -0.2, 0 },
        // Within rounding of the edge.
        { 10 + 1e-7, 5, Up, 1 + 5e-9, 1, 1 } };
    CTextureMap map;
    map.SetParams(TextureMapParams { .yMin = 0, .yMax = 5 });
    for (Case const& c : cases) {
        double s = -1;
        double t = -1;
        EXPECT_EQ(map.GetCoordinates(c.x, c.y, c.rows, s, t), c.isOn) << c.x << " " << c.y;
        EXPECT_NEAR(s, c.s, 1e-12);
        EXPECT_NEAR(t, c.t, 1e-12);
    }
    map.SetParams(TextureMapParams { .xMin = 1, .xMax = 1 });
    double s = 0;
    double t = 0;
    EXPECT_EQ(map.GetCoordinates(1, 0, Up, s, t), 0) << "a range of no width";
}

TEST(TextureMap, ArchivesHoldTheTexelsWhenThereAreAny)
{
    Bytes const start = Bytes().Int(1).Text("a.bmp").Double(0, 1, 0.5, 0.75).Double(1, 2, 3, 4);
    CTextureMap empty;
    EXPECT_EQ(test::Stored(empty),
        Bytes().Int(1).Text("").Double(0, 1, 0, 1).Double(-10, 10, -10, 10).Int(0, 0, 0, 1).Double(1));
    Bytes whole = start;
    whole.Int(1, 2, 77, 0).Double(0.5).Int(0x04030201, 0x08070605);
    CTextureMap map;
    ASSERT_TRUE(test::Load(map, whole));
    EXPECT_EQ(test::Stored(map), whole);
    EXPECT_THAT(Texels(map), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_EQ(map.GetReloadNeeded(), 0);

    Bytes absurd = start;
    EXPECT_FALSE(test::Load(map, absurd.Int(0x7FFFFFFF, 0x7FFFFFFF, 0, 0).Double(1).Int(1, 2)));
    EXPECT_TRUE(map.GetTexels().empty());
    Bytes negative = start;
    EXPECT_TRUE(test::Load(map, negative.Int(-4, -5, 0, 0).Double(1)));
    EXPECT_EQ(map.GetSize(), CSize(0, 0));
}

} // namespace
} // namespace ombrel
