// SPDX-License-Identifier: BSL-1.0
#include <host/text.hpp>

#include <support/allocations.hpp>
#include <support/make_entries.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/utf8.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace lf::import::host {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;
using testing::ElementsAre;

static_assert(std::is_nothrow_move_constructible_v<Utf16Text>);

/// The result of ICU, an independent implementation of the same rules.
std::u16string convertedByIcu(std::string_view utf8) {
    std::u16string result;
    auto const length = static_cast<std::int32_t>(utf8.size());
    for (std::int32_t index = 0; index < length;) {
        UChar32 codePoint = 0;
        auto const* const bytes = reinterpret_cast<std::uint8_t const*>(utf8.data());
        U8_NEXT(bytes, index, length, codePoint);
        codePoint = codePoint < 0 ? 0xFFFD : codePoint;
        if (codePoint > 0xFFFF) {
            result += static_cast<char16_t>((codePoint >> 10) + 0xD7C0);
            result += static_cast<char16_t>((codePoint & 0x3FF) | 0xDC00);
        } else {
            result += static_cast<char16_t>(codePoint);
        }
    }
    return result;
}

struct Utf16Row {
    std::string_view utf8;
    std::u16string_view utf16;
    char const* why;
};

TEST(Utf16Text, HasTheUnitsOfTheText) {
    using namespace std::string_view_literals;
    static constexpr std::array rows{
        Utf16Row{"", u"", "an empty text"},
        Utf16Row{"shapes.circle", u"shapes.circle", "ASCII characters take one unit each"},
        Utf16Row{"Größe.図形", u"Größe.図形", "two or three bytes become one unit"},
        Utf16Row{"\xF0\x9F\xA6\x89", u"\U0001F989", "four bytes become a surrogate pair"},
        Utf16Row{"a\0b"sv, u"a\0b"sv, "zero is a character"},
        Utf16Row{"a\xFFz", u"a\uFFFDz", "a byte that starts no character"},
        Utf16Row{"\xE5\x9B", u"\uFFFD", "an incomplete character becomes one replacement"},
        Utf16Row{"\xC0\xAF", u"\uFFFD\uFFFD", "an overlong form is ill-formed"},
        Utf16Row{"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD", "so is a surrogate"},
        Utf16Row{"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD",
                 "so is a character beyond U+10FFFF"},
    };
    for (auto const& [utf8, utf16, why] : rows) {
        EXPECT_EQ(Utf16Text(utf8).view(), utf16) << why;
    }
}

TEST(Utf16Text, AgreesWithIcuOnAllSequencesOfBytesThatMatter) {
    // The limits of the byte ranges of well-formed sequences, and their neighbours.
    static constexpr std::array<unsigned, 22> bytes{0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0,
                                                    0xBF, 0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC,
                                                    0xED, 0xEF, 0xF0, 0xF3, 0xF4, 0xF5};
    std::string text(4, '\0');
    for (unsigned const first : bytes) {
        for (unsigned const second : bytes) {
            for (unsigned const third : bytes) {
                for (unsigned const fourth : bytes) {
                    text = {static_cast<char>(first), static_cast<char>(second),
                            static_cast<char>(third), static_cast<char>(fourth)};
                    ASSERT_EQ(Utf16Text(text).view(), convertedByIcu(text));
                }
            }
        }
    }
}

TEST(Utf16Text, ReadsBackEveryCharacter) {
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        if (character >= 0xD800 && character <= 0xDFFF) {
            continue;
        }
        std::u16string utf16;
        if (character > 0xFFFF) {
            utf16 += static_cast<char16_t>((character >> 10U) + 0xD7C0U);
            utf16 += static_cast<char16_t>((character & 0x3FFU) | 0xDC00U);
        } else {
            utf16 += static_cast<char16_t>(character);
        }
        ASSERT_EQ(Utf16Text(fl::i18n::ustring_to_utf8(utf16)).view(), utf16);
    }
}

TEST(Utf16Text, AllocatesForLongTextsAlone) {
    std::string const usual(Utf16Text::lengthWithoutAllocation, 'n');
    std::size_t const before = support::countAllocations();
    std::size_t const length = Utf16Text(usual).view().size();
    EXPECT_EQ(support::countAllocations(), before);
    EXPECT_EQ(length, usual.size());

    std::string const longer = usual + "\xC3\xB6";
    EXPECT_EQ(Utf16Text(longer).view(), std::u16string(usual.size(), u'n') + u'ö');
    EXPECT_GT(support::countAllocations(), before);
}

TEST(Utf16Text, IsAValue) {
    for (std::string const& utf8 : {std::string("short"), std::string(100, 'l')}) {
        Utf16Text const original(utf8);
        Utf16Text copy(original);
        EXPECT_EQ(copy.view(), original.view());
        Utf16Text const moved(std::move(copy));
        EXPECT_EQ(moved.view(), original.view());
    }
}

TEST(ToUtf8, WritesEntriesAsUsersWriteThem) {
    EXPECT_EQ(toUtf8(makeName(u"Größe.図形")), "Größe.図形");
    EXPECT_EQ(toUtf8(ImportEntry(makeWildcard(u"a.b.*"))), "a.b.*");
    EXPECT_EQ(toUtf8(ImportEntry(makePackage(u"matrix@^2.1", u"m"))), "matrix@^2.1 as m");
}

TEST(ToUtf8, WritesMessagesWithTheirArguments) {
    resource_core::BaseMsgID message{{}, "KELDAR:lang", "MixedImportType"};
    EXPECT_EQ(toUtf8(message), "KELDAR:lang:MixedImportType()");
    message.arguments = {std::u16string(u"Größe"), std::string("narrow"), std::uint64_t{7}};
    EXPECT_EQ(toUtf8(message), R"(KELDAR:lang:MixedImportType("Größe", "narrow", "7"))");
}

TEST(KindOf, IsWhatTheEntryImports) {
    EXPECT_EQ(kindOf(makePackage(u"a")), ImportKind::Package);
    EXPECT_EQ(kindOf(makeName(u"a.b")), ImportKind::FullyQualified);
    EXPECT_EQ(kindOf(makeWildcard(u"a.*")), ImportKind::Wildcard);
}

TEST(IntroducedNameOf, IsEmptyForAWildcardAlone) {
    EXPECT_EQ(introducedNameOf(makePackage(u"a.b@1")), u"a.b");
    EXPECT_EQ(introducedNameOf(makeName(u"a.b")), u"b");
    EXPECT_EQ(introducedNameOf(makeWildcard(u"a.*")), u"");
}

TEST(SegmentsOf, AreWhatStandsBetweenDots) {
    EXPECT_THAT(segmentsOf(u"a.bc.d"), ElementsAre(u"a", u"bc", u"d"));
    EXPECT_THAT(segmentsOf(u"a"), ElementsAre(u"a"));
    EXPECT_THAT(segmentsOf(u""), ElementsAre(u""));
    EXPECT_THAT(segmentsOf(u".a."), ElementsAre(u"", u"a", u""));
}

TEST(PrefixOf, IsWhatStandsBeforeTheStar) {
    EXPECT_EQ(prefixOf(makeWildcard(u"a.b.*")), u"a.b");
    EXPECT_EQ(prefixOf(makeWildcard(u"a.*")), u"a");
    EXPECT_EQ(prefixOf(makeWildcard(u".b.*")), u".b");
    EXPECT_EQ(prefixOf(WildcardImportEntry(WildcardImportArgument{})), u"");
}

} // namespace
} // namespace lf::import::host
