// SPDX-License-Identifier: BSL-1.0
#include <fl/i18n/ustring_conversions.hpp>

#include <support/random_check.hpp>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <unicode/unistr.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using fl::i18n::ustring_to_utf8;
using namespace std::string_view_literals;

constexpr std::size_t mebi = std::size_t{1} << 20U;

struct Row {
    std::u16string_view text;
    std::string_view utf8;
    char const* why;
};

constexpr auto rows = std::to_array<Row>({
    {u"", "", "nothing stays nothing"},
    {u"plain ASCII", "plain ASCII", "ASCII stays as it is"},
    {u"\0a\0"sv, "\0a\0"sv, "zero is an ordinary character"},
    {u"\u007F", "\x7F", "the last of one byte"},
    {u"\u0080", "\xC2\x80", "the first of two bytes"},
    {u"\u07FF", "\xDF\xBF", "the last of two bytes"},
    {u"\u0800", "\xE0\xA0\x80", "the first of three bytes"},
    {u"\uFFFF", "\xEF\xBF\xBF", "the last of three bytes, a noncharacter but well-formed"},
    {u"\U00010000", "\xF0\x90\x80\x80", "the first of four bytes"},
    {u"\U0010FFFF", "\xF4\x8F\xBF\xBF", "the last of four bytes"},
    {u"e\u0301", "e\xCC\x81", "nothing is composed"},
    {u"\uFEFF", "\xEF\xBB\xBF", "a byte order mark is kept"},
    {u"a\u00E9b",
     "a\xC3\xA9"
     "b",
     "ASCII before and after other characters"},
    {u"\xD800", "\xEF\xBF\xBD", "a high surrogate alone"},
    {u"\xDFFF", "\xEF\xBF\xBD", "a low surrogate alone"},
    {u"ab\xD800", "ab\xEF\xBF\xBD", "a high surrogate at the end"},
    {u"\xDC00"
     u"ab",
     "\xEF\xBF\xBD"
     "ab",
     "a low surrogate at the start"},
    {u"\xDC00\xD800", "\xEF\xBF\xBD\xEF\xBF\xBD", "in the wrong order, replaced separately"},
    {u"\xD800\xD800\xDC00", "\xEF\xBF\xBD\xF0\x90\x80\x80", "a high one before a pair"},
    {u"\xD800\xDC00\xDC00", "\xF0\x90\x80\x80\xEF\xBF\xBD", "a low one after a pair"},
    {u"\xD800"
     u"a\xDC00",
     "\xEF\xBF\xBD"
     "a\xEF\xBF\xBD",
     "a pair torn apart"},
});

/// The result of ICU's own conversion.
std::string utf8ByIcu(std::u16string const& text) {
    std::string result;
    icu::UnicodeString(text.data(), static_cast<std::int32_t>(text.size())).toUTF8String(result);
    return result;
}

TEST(UstringToUtf8, ConvertsEachCodePointAndReplacesEachIllFormedUnit) {
    for (Row const& row : rows) {
        EXPECT_EQ(ustring_to_utf8(row.text), row.utf8) << row.why;
    }
}

TEST(UstringToUtf8, AgreesWithIcuOnEverySingleUnit) {
    for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
        std::u16string const text(1, static_cast<char16_t>(unit));
        ASSERT_EQ(ustring_to_utf8(text), utf8ByIcu(text)) << "unit " << unit;
    }
}

TEST(UstringToUtf8, AgreesWithIcuOnTextsRichInSurrogates) {
    support::checkOnRandomCases(1000, [] {
        auto const unit = rc::gen::oneOf(rc::gen::inRange<std::uint32_t>(0xD7FE, 0xE002),
                                         rc::gen::element<std::uint32_t>(0xD83D, 0xDE00),
                                         rc::gen::inRange<std::uint32_t>(0, 0x10000));
        std::u16string text;
        for (std::uint32_t const each : *rc::gen::container<std::vector<std::uint32_t>>(unit)) {
            text += static_cast<char16_t>(each);
        }
        RC_ASSERT(ustring_to_utf8(text) == utf8ByIcu(text));
    });
}

TEST(UstringToUtf8, ConvertsLongTexts) {
    // EXPECT_TRUE, since EXPECT_EQ would print the texts.
    std::u16string const ascii(mebi, u'a');
    EXPECT_TRUE(ustring_to_utf8(ascii) == std::string(mebi, 'a'));

    std::u16string const halves(mebi, u'\xD800');
    EXPECT_TRUE(ustring_to_utf8(halves) == utf8ByIcu(halves));

    std::u16string const late = ascii + u"\U0001F600";
    EXPECT_TRUE(ustring_to_utf8(late) == std::string(mebi, 'a') + "\xF0\x9F\x98\x80");
}

} // namespace
