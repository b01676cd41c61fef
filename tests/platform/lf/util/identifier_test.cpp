// SPDX-License-Identifier: BSL-1.0
#include <lf/util/identifier.hpp>

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace {

using lf::util::ConvertibleBasicStringView;
using lf::util::isValidIdentifier;
using namespace std::string_view_literals;

constexpr std::size_t mebi = std::size_t{1} << 20U;
constexpr char32_t lastAscii = 0x7F;
constexpr char32_t lastCodePoint = 0x10FFFF;

struct Row {
    std::u16string_view text;
    bool valid;
    char const* why;
};

constexpr auto rows = std::to_array<Row>({
    {u"", false, "nothing is no identifier"},
    {u"a", true, "a letter"},
    {u"_", true, "an underscore may start, even alone"},
    {u"__a1_", true, "underscores and digits anywhere after the start"},
    {u"1a", false, "a digit must not start"},
    {u"a b", false, "a blank"},
    {u" a", false, "nothing is trimmed"},
    {u"a.b", false, "a dot"},
    {u"*", false, "an asterisk"},
    {u"a@b", false, "an at sign"},
    {u"a-b", false, "a hyphen"},
    {u"$a", false, "a dollar sign"},
    {u"\0"sv, false, "zero alone"},
    {u"a\0"sv, false, "zero after a letter"},
    {u"for", true, "reserved words are identifiers"},
    {u"\u00E4", true, "a letter outside ASCII"},
    {u"\u00E4_1", true, "ASCII after a letter outside it"},
    {u"\u00E4 1", false, "a blank after a letter outside ASCII"},
    {u"\u00D7", false, "a symbol outside ASCII"},
    {u"a\u00D7", false, "the same after a letter"},
    {u"\u0301e", false, "a combining mark must not start"},
    {u"e\u0301", true, "a combining mark after its letter"},
    {u"_\u0301", true, "a combining mark after an underscore"},
    {u"\u0661", false, "a digit of another script must not start"},
    {u"a\u0661", true, "a digit of another script after a letter"},
    {u"\u203F", false, "a connector other than the underscore must not start"},
    {u"a\u203F", true, "a connector after a letter"},
    {u"a\u200D", false,
     "a joiner is invisible, although newer versions of Unicode allow it in names"},
    {u"a\u200Db", false, "the same between letters"},
    {u"a\u200C", false, "so is a non-joiner"},
    {u"a\uFE0F", false, "a variation selector is invisible"},
    {u"\u3164", false, "a filler is an invisible letter"},
    {u"\u00E4\U000E0100", false, "an invisible character of two units"},
    {u"\uFF3F", false, "the wide underscore is a connector only"},
    {u"\U00010400", true, "a letter of two units"},
    {u"a\U00010400", true, "a letter of two units after one of one"},
    {u"\U0001D7D8", false, "a digit of two units must not start"},
    {u"a\U0001D7D8", true, "a digit of two units after a letter"},
    {u"\U0001F600", false, "an emoji"},
    {u"a\U0001F600", false, "an emoji after a letter"},
    {u"\xD801", false, "a high surrogate alone"},
    {u"\xDC00", false, "a low surrogate alone"},
    {u"a\xD801", false, "a high surrogate at the end"},
    {u"a\xDC00", false, "a low surrogate at the end"},
    {u"a\xD801"
     u"b",
     false, "a high surrogate before a letter"},
    {u"\xDC00\xD801", false, "a pair in the wrong order"},
    {u"\U00010400\xD801", false, "a high surrogate after a pair"},
});

bool has(UProperty property, char32_t codePoint) {
    return u_hasBinaryProperty(static_cast<UChar32>(codePoint), property);
}

bool isInvisible(char32_t codePoint) {
    return has(UCHAR_DEFAULT_IGNORABLE_CODE_POINT, codePoint);
}

bool mayStart(char32_t codePoint) {
    return codePoint == U'_' || (has(UCHAR_XID_START, codePoint) && !isInvisible(codePoint));
}

bool mayContinue(char32_t codePoint) {
    return has(UCHAR_XID_CONTINUE, codePoint) && !isInvisible(codePoint);
}

/// The code point as text; a surrogate as an unpaired unit.
std::u16string textOf(char32_t codePoint) {
    icu::UnicodeString const text(static_cast<UChar32>(codePoint));
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

TEST(Identifier, FollowsTheVisibleDefaultIdentifiersOfUnicode) {
    for (Row const& row : rows) {
        EXPECT_EQ(isValidIdentifier(row.text), row.valid) << row.why;
    }
}

TEST(Identifier, StartsWithWhatUnicodeAllowsAndShowsForEveryCodePoint) {
    for (char32_t codePoint = 0; codePoint <= lastCodePoint; ++codePoint) {
        ASSERT_EQ(isValidIdentifier(textOf(codePoint)), mayStart(codePoint))
            << static_cast<unsigned>(codePoint);
    }
}

TEST(Identifier, ContinuesWithWhatUnicodeAllowsAndShowsForEveryCodePoint) {
    for (char32_t codePoint = 0; codePoint <= lastCodePoint; ++codePoint) {
        ASSERT_EQ(isValidIdentifier(u'a' + textOf(codePoint)), mayContinue(codePoint))
            << static_cast<unsigned>(codePoint);
    }
}

TEST(Identifier, JudgesAsciiAlikeBeforeAndBehindOtherCharacters) {
    for (char32_t codePoint = 0; codePoint <= lastAscii; ++codePoint) {
        std::u16string const unit = textOf(codePoint);
        EXPECT_EQ(isValidIdentifier(u'a' + unit), isValidIdentifier(u'\u00E4' + unit))
            << static_cast<unsigned>(codePoint);
        EXPECT_EQ(isValidIdentifier(unit), isValidIdentifier(unit + u'\u00E4'))
            << static_cast<unsigned>(codePoint);
    }
}

TEST(Identifier, HasNoLimitOfLength) {
    std::u16string const ascii(mebi, u'a');
    EXPECT_TRUE(isValidIdentifier(ascii));
    EXPECT_FALSE(isValidIdentifier(ascii + u' '));
    EXPECT_TRUE(isValidIdentifier(ascii + u"\U00010400"));
    EXPECT_FALSE(isValidIdentifier(ascii + u"\xD801"));
    EXPECT_TRUE(isValidIdentifier(u'a' + std::u16string(mebi, u'\u0301')));
}

TEST(ConvertibleBasicStringView, IsMadeFromEveryKindOfString) {
    auto const viewed = [](ConvertibleBasicStringView<char16_t> view) {
        return std::u16string_view(view);
    };
    std::u16string const string(u"a\0b"sv);
    EXPECT_EQ(viewed(string), string);
    EXPECT_EQ(viewed(string).data(), string.data()) << "nothing is copied";
    EXPECT_EQ(viewed(u"abc"sv.substr(1, 1)), u"b") << "no terminator is needed";
    EXPECT_EQ(viewed(u"abc"), u"abc");
    EXPECT_EQ(std::string_view(ConvertibleBasicStringView<char>("abc")), "abc");
}

} // namespace
