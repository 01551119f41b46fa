// Fitting a slip box's lines with the widths of the font this system sets Arial in.
#include "engine/slip/SlipFit.h"

#include "engine/slip/SlipFont.h"

#include <gtest/gtest.h>

namespace wordbm::slip::test {
namespace {

using Give = SlipFit::Give;
using Line = SlipFit::Line;

const SlipFont& font = SlipFont::Arial();

// The payment part's details box on the inside: 87 by 85 mm less Word's inner margins.
constexpr float Width = 232.2F, Height = 233.7F;

Line heading(const char* text) {
    return {text, 8, true, Give::Nothing};
}

Line value(std::string text, Give give = Give::Nothing) {
    return {std::move(text), 10, false, give};
}

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) {
        result += (i ? " " : "") + text;
    }
    return result;
}

TEST(SlipFont, MeasuresTheFontFileFontconfigNamesForArial) {
    ASSERT_TRUE(font.Measured()) << "no font file for Arial";
    EXPECT_NE(font.File(false), font.File(true));
    EXPECT_GT(font.Width("WWW", 10, false), font.Width("iii", 10, false));
    EXPECT_GT(font.Width("Betrag", 10, true), font.Width("Betrag", 10, false));
    EXPECT_FLOAT_EQ(font.Width("Zürich", 20, false), 2 * font.Width("Zürich", 10, false));
    EXPECT_FLOAT_EQ(font.Width("a b", 10, false),
                    font.Width("a", 10, false) + font.Width(" ", 10, false) + font.Width("b", 10, false));
    EXPECT_GT(font.LineHeight(10), 10.0F);
}

TEST(SlipFit, LinesWrapAtBlanksAndAWordWiderThanTheBoxBetweenItsCharacters) {
    const SlipFit fit(font, Width, Height);
    const std::string words = repeated("Buchhaltung", 3);
    ASSERT_LT(font.Width(words, 10, false), Width);
    EXPECT_EQ(fit.Rows(value(words)), 1);
    EXPECT_EQ(fit.Rows(value(words + " " + words)), 2);
    EXPECT_EQ(fit.Rows(value(std::string(200, 'W'))),
              static_cast<int>(font.Width(std::string(200, 'W'), 10, false) / Width) + 1);
    EXPECT_EQ(fit.Rows(value("")), 1);
    EXPECT_FLOAT_EQ(fit.Height({value("Zahlbar durch"), value(""), value("")}), font.LineHeight(10));
}

TEST(SlipFit, LinesThatFitStayAsTheyAre) {
    const SlipFit fit(font, Width, Height);
    const std::vector<Line> lines{heading("Zusätzliche Informationen"),
                                  value(repeated("Rechnung", 10), Give::Message), heading("Zahlbar durch"),
                                  value("Muster AG", Give::Address)};
    ASSERT_TRUE(fit.Fits(lines));
    const std::vector<Line> fitted = fit.Fitted(lines);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(fitted[i].text, lines[i].text);
    }
}

TEST(SlipFit, TheMessageGivesFirstDownToOneRowThenTheLongestAddressLine) {
    const std::string message = repeated("Jahresabschluss", 12);
    const std::string longName = repeated("Müller-Wüthrich", 7);
    const std::string street = repeated("Bahnhofstrasse", 5);
    std::vector<Line> lines{heading("Konto / Zahlbar an"),  value("CH85 3080 8000 0045 1200 3"),
                            value(street, Give::Address),   heading("Zusätzliche Informationen"),
                            value(message, Give::Message),  heading("Zahlbar durch"),
                            value(longName, Give::Address), value("CH", Give::Address)};
    const SlipFit roomy(font, Width, Height);
    ASSERT_TRUE(roomy.Fits(lines));
    ASSERT_GE(roomy.Rows(lines[4]), 3);
    ASSERT_GE(roomy.Rows(lines[6]), 3);

    // Room for all but two rows: the message gives them.
    const SlipFit tight(font, Width, roomy.Height(lines) - font.LineHeight(10) * 1.5F);
    const std::vector<Line> fitted = tight.Fitted(lines);
    EXPECT_TRUE(tight.Fits(fitted));
    EXPECT_EQ(tight.Rows(fitted[4]), tight.Rows(lines[4]) - 2);
    EXPECT_EQ(fitted[6].text, longName);
    EXPECT_TRUE(fitted[4].text.ends_with(SlipFit::Ellipsis));
    const std::string kept = fitted[4].text.substr(0, fitted[4].text.size() - SlipFit::Ellipsis.size());
    EXPECT_EQ(message.rfind(kept, 0), 0u) << fitted[4].text;

    // Less room still: the message is down to one row, then the name gives, not the shorter street.
    const float oneRowLess =
        tight.Height(fitted) - static_cast<float>(tight.Rows(fitted[4]) - 1) * font.LineHeight(10);
    const SlipFit tighter(font, Width, oneRowLess - font.LineHeight(10) * 0.5F);
    const std::vector<Line> shortened = tighter.Fitted(lines);
    EXPECT_TRUE(tighter.Fits(shortened));
    EXPECT_EQ(tighter.Rows(shortened[4]), 1);
    EXPECT_EQ(tighter.Rows(shortened[6]), tighter.Rows(lines[6]) - 1);
    EXPECT_EQ(shortened[2].text, street);
    for (const std::size_t index : {0U, 1U, 3U, 5U, 7U}) {
        EXPECT_EQ(shortened[index].text, lines[index].text);
    }
}

TEST(SlipFit, AShortenedLineEndsBehindAWholeCharacterWithoutATrailingBlank) {
    const SlipFit fit(font, Width, Height);
    const Line umlauts = value(repeated("Bäckerei Müller", 10), Give::Address);
    for (int rows = 1; rows <= 3; ++rows) {
        const std::string cut = fit.Shortened(umlauts, rows);
        EXPECT_LE(fit.Rows(value(cut)), rows);
        EXPECT_TRUE(cut.ends_with(SlipFit::Ellipsis)) << cut;
        const std::string kept = cut.substr(0, cut.size() - SlipFit::Ellipsis.size());
        EXPECT_EQ(umlauts.text.rfind(kept, 0), 0u);
        EXPECT_NE(kept.back(), ' ');
        // A lead byte of ä or ü would stand alone before the ellipsis.
        EXPECT_NE(static_cast<unsigned char>(kept.back()), 0xC3) << cut;
    }
    EXPECT_EQ(fit.Shortened(value("Zürich"), 1), "Zürich");
}

} // namespace
} // namespace wordbm::slip::test
