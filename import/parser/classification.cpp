// SPDX-License-Identifier: BSL-1.0

#include <import/parser/classification.hpp>

#include <import/diagnostics/make_msg_id.hpp>
#include <import/parser/in_place.hpp>
#include <import/platform.hpp>

#include <algorithm>
#include <exception>
#include <string>
#include <utility>
#include <variant>

namespace lf::import {

namespace {

using message_arguments::ImportArgument;
using message_arguments::ReservedWord;
using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;
using resource_core::GenericMsgIDHolder;

using Warning = std::optional<GenericMsgIDHolder>;

using InvalidPackageSpecifierException =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

constexpr std::u16string_view wildcardSegment = u"*";
constexpr std::u16string_view asWord = u"as";

// The keyword service tells kinds of words apart by this; the library asks about one kind only.
constexpr int reservedWordSelector = 8;

bool isReservedWord(std::u16string const& word) {
    return lfu::isReservedWord(word, reservedWordSelector);
}

InvalidImportArgument rejectArgument(std::u16string_view argument) {
    return {makeMsgHolder<"InvalidImportArgument">(ImportArgument(argument))};
}

InvalidImportArgument rejectKeyword(std::u16string_view argument, std::u16string_view word) {
    return {makeMsgHolder<"KeywordInImportArgument">(ImportArgument(argument), ReservedWord(word))};
}

GenericMsgIDHolder malformedWarning(std::u16string_view argument) {
    return makeMsgHolder<"MalformedImportArgumentWarning">(ImportArgument(argument));
}

GenericMsgIDHolder keywordWarning(std::u16string_view argument, std::u16string_view word) {
    return makeMsgHolder<"KeywordInImportArgumentWarning">(ImportArgument(argument),
                                                           ReservedWord(word));
}

// What both grammars need to know of a dotted name.
struct DottedName {
    std::u16string_view rawArgument;
    std::u16string_view rootElement;
    std::u16string_view lastSegment;
    bool hasBadSegment = false; // before the last one

    bool isWildcard() const noexcept { return lastSegment == wildcardSegment; }
};

// Tests the segments before the last one, up to the first that is no identifier. They may well be
// reserved words; the last segment is the grammars' own affair.
DottedName walkSegments(std::u16string_view argument) {
    auto split = splitAtFirstDot(argument);
    DottedName name{.rawArgument = argument, .rootElement = split->head, .lastSegment = {}};
    for (; split; split = splitAtFirstDot(split->tail)) {
        name.hasBadSegment = name.hasBadSegment || !lf::util::isValidIdentifier(split->head);
        name.lastSegment = split->tail;
    }
    return name;
}

ParsedImportArgument makeFullyQualified(DottedName const& name, std::u16string&& introducedName,
                                        Warning&& warning = {}) {
    auto const record = [&] {
        return FullyQualifiedImportArgument{.rootElement = std::u16string(name.rootElement),
                                            .introducedName = std::move(introducedName),
                                            .rawArgument = std::u16string(name.rawArgument),
                                            .warning = std::move(warning)};
    };
    return ParsedImportArgument(std::in_place_type<FullyQualifiedImportArgument>, InPlace{record});
}

ParsedImportArgument makeWildcard(DottedName const& name, Warning&& warning = {}) {
    auto const record = [&] {
        return WildcardImportArgument{.rootElement = std::u16string(name.rootElement),
                                      .rawArgument = std::u16string(name.rawArgument),
                                      .warning = std::move(warning)};
    };
    return ParsedImportArgument(std::in_place_type<WildcardImportArgument>, InPlace{record});
}

// Counts, for want of an early exit: most texts have no `@` and plain names no dot, so they are
// read to their end, and a loop that always is can be vectorised. A command of long names parses in
// a tenth less time.
bool contains(std::u16string_view text, char16_t unit) noexcept {
    return std::ranges::count(text, unit) != 0;
}

} // namespace

std::optional<DotSplit> splitAtFirstDot(std::u16string_view text) noexcept {
    auto const dot = text.find(u'.');
    if (dot == std::u16string_view::npos) {
        return std::nullopt;
    }
    return DotSplit{.head = text.substr(0, dot), .tail = text.substr(dot + 1)};
}

ParsedImportArgument classifyArgument(std::u16string_view argument) {
    if (argument.empty()) {
        return IgnoredArgument{};
    }
    if (contains(argument, u'@')) { // before the dots: `a.b@1.0` is a package
        return classifyVersionedPackage(argument);
    }
    if (contains(argument, u'.')) {
        return classifyDottedName(argument);
    }
    if (argument == asWord) {
        return AsClauseImportArgument{};
    }
    return classifyPlainName(argument);
}

ParsedImportArgument classifyLegacyArgument(std::u16string_view argument) {
    if (argument.empty()) {
        return IgnoredArgument{};
    }
    if (argument == u".*") { // nothing left to import, yet the severity stays a warning's
        return InvalidImportArgument{malformedWarning(argument)};
    }
    if (contains(argument, u'.')) {
        return classifyLegacyDottedName(argument);
    }
    return InvalidImportArgument{makeMsgHolder<"ImportArgumentWithoutDot">()};
}

ParsedImportArgument classifyDottedName(std::u16string_view argument) {
    DottedName const name = walkSegments(argument);
    if (name.hasBadSegment) {
        return rejectArgument(argument);
    }
    if (name.isWildcard()) {
        return makeWildcard(name);
    }
    if (!lf::util::isValidIdentifier(name.lastSegment)) {
        return rejectArgument(argument);
    }
    std::u16string introducedName(name.lastSegment);
    if (isReservedWord(introducedName)) {
        return rejectKeyword(argument, introducedName);
    }
    return makeFullyQualified(name, std::move(introducedName));
}

ParsedImportArgument classifyLegacyDottedName(std::u16string_view argument) {
    DottedName const name = walkSegments(argument);
    if (name.isWildcard()) {
        return name.hasBadSegment ? makeWildcard(name, malformedWarning(argument))
                                  : makeWildcard(name);
    }
    std::u16string introducedName(name.lastSegment);
    if (isReservedWord(introducedName)) {
        return makeFullyQualified(name, std::move(introducedName),
                                  keywordWarning(argument, name.lastSegment));
    }
    return makeFullyQualified(name, std::move(introducedName));
}

ParsedImportArgument classifyPlainName(std::u16string_view word) {
    if (!lf::util::isValidIdentifier(word)) {
        return rejectArgument(word);
    }
    std::u16string name(word);
    if (isReservedWord(name)) {
        return rejectKeyword(word, word);
    }
    return PackageNameImportArgument{std::move(name)};
}

ParsedImportArgument classifyVersionedPackage(std::u16string_view argument) {
    try {
        auto const& rangeFactory = GetComponentVersionRangeFactory();
        return VersionedPackageImportArgument{
            PackageSpecifier(std::u16string(argument), rangeFactory)};
    } catch (InvalidPackageSpecifierException const&) {
        return rejectArgument(argument);
    }
}

} // namespace lf::import
