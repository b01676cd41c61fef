// SPDX-License-Identifier: BSL-1.0
#include <lfu/reserved_words.hpp>

#include <algorithm>
#include <array>
#include <string_view>

namespace lfu {

namespace {

constexpr auto reservedWords = std::to_array<std::u16string_view>({
    u"and",      u"break",  u"case",   u"catch",  u"class", u"continue", u"default",
    u"do",       u"else",   u"elseif", u"end",    u"false", u"finally",  u"for",
    u"function", u"global", u"if",     u"import", u"not",   u"or",       u"package",
    u"return",   u"switch", u"throw",  u"true",   u"try",   u"while",
});

static_assert(std::is_sorted(reservedWords.begin(), reservedWords.end()));

constexpr bool isShorter(std::u16string_view left, std::u16string_view right) noexcept {
    return left.size() < right.size();
}

constexpr auto lengths = std::minmax_element(reservedWords.begin(), reservedWords.end(), isShorter);
constexpr auto shortest = lengths.first->size();
constexpr auto longest = lengths.second->size();

} // namespace

bool isReservedWord(std::u16string const& word, int /*selector*/) {
    return word.size() >= shortest && word.size() <= longest &&
           std::binary_search(reservedWords.begin(), reservedWords.end(),
                              std::u16string_view(word));
}

} // namespace lfu
