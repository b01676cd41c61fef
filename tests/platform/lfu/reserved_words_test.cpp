// SPDX-License-Identifier: BSL-1.0
#include <lfu/reserved_words.hpp>

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

namespace {

using lfu::isReservedWord;

constexpr int anySelector = 8;

constexpr auto reserved = std::to_array<char16_t const*>({
    u"and",      u"break",  u"case",   u"catch",  u"class", u"continue", u"default",
    u"do",       u"else",   u"elseif", u"end",    u"false", u"finally",  u"for",
    u"function", u"global", u"if",     u"import", u"not",   u"or",       u"package",
    u"return",   u"switch", u"throw",  u"true",   u"try",   u"while",
});

struct Row {
    char16_t const* word;
    char const* why;
};

constexpr auto notReserved = std::to_array<Row>({
    {u"", "the empty text is not a word"},
    {u"as", "it has a meaning only in imports"},
    {u"a", "shorter than any reserved word"},
    {u"zz", "after the last one"},
    {u"aaa", "before the first one"},
    {u"For", "case matters"},
    {u"FOR", "case matters"},
    {u"fo", "a part of a reserved word"},
    {u"functions", "longer than any reserved word"},
    {u" for", "nothing is trimmed"},
    {u"for ", "nothing is trimmed"},
    {u"f\u00F6r", "a letter outside ASCII"},
    {u"\uFF46\uFF4F\uFF52", "full-width letters are not folded"},
    {u"\xD800", "a lone surrogate"},
    {u"if\xDC00", "a reserved word with a lone surrogate"},
});

TEST(ReservedWords, AreExactlyTheListedOnes) {
    for (std::u16string const word : reserved) {
        EXPECT_TRUE(isReservedWord(word, anySelector)) << testing::PrintToString(word);
        EXPECT_FALSE(isReservedWord(word + u'_', anySelector)) << testing::PrintToString(word);
        EXPECT_FALSE(isReservedWord(u'_' + word, anySelector)) << testing::PrintToString(word);
    }
    for (Row const& row : notReserved) {
        EXPECT_FALSE(isReservedWord(row.word, anySelector)) << row.why;
    }
}

TEST(ReservedWords, AreComparedInFull) {
    std::u16string withZero = u"if";
    withZero += u'\0';
    EXPECT_FALSE(isReservedWord(withZero, anySelector));
    EXPECT_FALSE(isReservedWord(std::u16string(1 << 20, u'f'), anySelector));
}

TEST(ReservedWords, AreTheSameForEverySelector) {
    for (int const selector :
         {std::numeric_limits<int>::min(), -1, 0, 1, 8, 9, std::numeric_limits<int>::max()}) {
        EXPECT_TRUE(isReservedWord(u"while", selector)) << selector;
        EXPECT_FALSE(isReservedWord(u"as", selector)) << selector;
    }
}

} // namespace
