#include "ombrel/layout/axes/WordLabels.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace ombrel {
namespace {

/// Every character 8 pixels wide, whatever its bytes.
int Width(std::string const& text)
{
    return 8 * static_cast<int>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

std::vector<std::string> Words(std::size_t count, std::string const& stem)
{
    std::vector<std::string> words;
    for (std::size_t i = 0; i < count; ++i)
        words.push_back(stem + std::to_string(i));
    return words;
}

TEST(WordLabels, AreLevelThenUprightThenFewer)
{
    auto const fit
        = [](std::vector<std::string> const& words, int length) { return FitWords(words, length, 100, 15, Width); };
    WordLabels const level = fit({ "North", "South" }, 200);
    EXPECT_FALSE(level.upright);
    EXPECT_EQ(level.texts, (std::vector<std::string> { "North", "South" }));
    WordLabels const upright = fit({ "Nordrhein-Westfalen", "Bremen", "Hessen" }, 200);
    EXPECT_TRUE(upright.upright);
    EXPECT_EQ(upright.texts, (std::vector<std::string> { "Nordrhein-W…", "Bremen", "Hessen" }));
    struct {
        std::size_t count;
        int length;
        std::size_t step;
        bool isUpright;
    } const cases[] { { 10, 400, 1, false }, { 20, 400, 1, true }, { 25, 405, 2, false }, { 40, 400, 2, true },
        { 60, 400, 5, false }, { 100, 400, 10, false }, { 150, 400, 20, false }, { 1000, 400, 100, false } };
    for (auto const& c : cases) {
        WordLabels const labels = fit(Words(c.count, c.count == 40 ? "of some length " : "w"), c.length);
        EXPECT_EQ(labels.upright, c.isUpright) << c.count;
        EXPECT_EQ(labels.shown[1], c.step) << c.count;
        EXPECT_EQ(labels.shown.size(), (c.count + c.step - 1) / c.step) << c.count;
    }
    // No word fits: a few are shown, cut at a whole character and without a blank before the ellipsis.
    WordLabels const cut = fit(std::vector<std::string>(100, "äöü äöüäöüäöüäöüäöü"), 200);
    EXPECT_EQ(cut.shown[1], 50u);
    EXPECT_EQ(cut.texts[0], "äöü äöüäöü…");
    EXPECT_EQ(fit(std::vector<std::string>(100, "äöü äöüäöüäöüäöüäöü"), 240).shown[1], 50u);
    EXPECT_EQ(fit(std::vector<std::string>(100, "abc defghijklmnopqr"), 110).texts[0], "abc…");
}

} // namespace
} // namespace ombrel
