#include "ombrel/platform/host/Host.h"

#include "ombrel/platform/host/LocalePictures.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <utility>

namespace ombrel {
namespace {

TEST(Host, StringResourcesFallBackToTheBuiltInTexts)
{
    CString text("untouched");
    EXPECT_FALSE(LoadStringResource(1004, text));
    EXPECT_EQ(text, "untouched");
    for (auto const& [id, expected] : { std::pair(1005U, "Software\\Ombrel\\Graphs"),
             { 1006U, "Software\\Ombrel\\Graphs\\2D" }, { 1007U, "Software\\Ombrel\\Graphs\\3D" } }) {
        EXPECT_TRUE(LoadStringResource(id, text));
        EXPECT_EQ(text, expected);
    }

    SetStringResourceFunction([](UINT id, CString& found) {
        found = "the host's";
        return id == 1004 || id == 1006;
    });
    EXPECT_TRUE(LoadStringResource(1004, text));
    EXPECT_EQ(text, "the host's");
    LoadStringResource(1003, text);
    EXPECT_EQ(text, "Ombrel");
    SetStringResourceFunction(nullptr);
    EXPECT_FALSE(LoadStringResource(1004, text));
}

TEST(Host, MessagesGoToStandardErrorUnlessTheHostTakesThem)
{
    testing::internal::CaptureStderr();
    MessageBox("Data are missing.", "Invalid Data", MB_OK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Invalid Data: Data are missing.\n");

    CString shown;
    SetMessageBoxFunction([&shown](CString const& text, CString const& title, UINT style) {
        shown.Format("%s|%s|%d", text, title, style);
        // A host may install another function from within.
        SetMessageBoxFunction(nullptr);
    });
    MessageBox("text", "title", MB_ICONEXCLAMATION);
    EXPECT_EQ(shown, "text|title|48");
}

TEST(Host, PicturesFollowStrftimeFormats)
{
    using Case = std::tuple<char const*, char const*>;
    for (auto const& [format, picture] : { Case { "%m/%d/%y", "MM/dd/yy" }, { "%d.%m.%Y", "dd.MM.yyyy" },
             { "%-d.%-m.%Y", "d.M.yyyy" }, { "%e/%_m/%Ey", "d/M/yy" }, { "%D %T", "MM/dd/yy HH:mm:ss" },
             { "%F", "yyyy-MM-dd" }, { "%r", "hh:mm:ss tt" }, { "%k:%M:%OS %Z", "H:mm:ss" },
             { "%-dd de %b", "d'd' 'de' MMM" }, { "%Y\xE5\xB9\xB4%m\xE6\x9C\x88", "yyyy\xE5\xB9\xB4MM\xE6\x9C\x88" },
             { "%Q%d%", "dd" }, { "%I %p", "hh tt" }, { "%-H:%-I:%-d%%", "H:h:d%" }, { "%d a.b %m", "dd 'a.b' MM" },
             { "%H o'clock", "HH 'o''clock'" }, { "%y. gada", "yy. 'gada'" } })
        EXPECT_EQ(MakePicture(format), CString(picture)) << format;
}

TEST(Host, UnknownLocalesWriteDatesPlainly)
{
    for (char const* const name : { "C", "POSIX", "no_SUCH.locale", "../../etc" }) {
        LocalePictures const pictures = GetLocalePictures(name);
        EXPECT_EQ(pictures.shortDate, "MM/dd/yy") << name;
        EXPECT_EQ(pictures.time, "HH:mm:ss") << name;
    }
    setenv("LC_ALL", "C", 1);
    EXPECT_EQ(GetLocaleShortDatePicture(), "MM/dd/yy");
    EXPECT_EQ(GetLocaleTimePicture(), "HH:mm:ss");
}

} // namespace
} // namespace ombrel
