// SPDX-License-Identifier: BSL-1.0

#include <import/parser/classification.hpp>

#include <import/diagnostics/make_msg_id.hpp>
#include <import/parser/in_place.hpp>
#include <import/platform.hpp>

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

// Selects the kind of words in the host's keyword service; the library uses one kind only.
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

// The parts of a dotted name that both grammars need.
struct DottedName {
    std::u16string_view rawArgument;
    std::u16string_view rootElement;
    std::u16string_view lastSegment;
    bool hasBadSegment = false; // before the last one

    bool isWildcard() const noexcept { return lastSegment == wildcardSegment; }
};

// Tests the segments before the last one, up to the first that is not an identifier. They may be
// reserved words. The grammars test the last segment themselves.
DottedName walkSegments(std::u16string_view argument) {
    DottedName name{.rawArgument = argument,
                    .rootElement = argument.substr(0, argument.find(u'.')),
                    .lastSegment = argument};
    for (auto dot = argument.find(u'.'); dot != std::u16string_view::npos;
         dot = name.lastSegment.find(u'.')) {
        name.hasBadSegment =
            name.hasBadSegment || !lf::util::isValidIdentifier(name.lastSegment.substr(0, dot));
        name.lastSegment.remove_prefix(dot + 1);
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

bool contains(std::u16string_view text, char16_t unit) noexcept {
    return text.find(unit) != std::u16string_view::npos;
}

// For an argument with a dot: a name or wildcard without warning, or a rejection.
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

// For an argument with a dot: a name or wildcard, perhaps with a warning.
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

// For a word without dot and `@` that is not `as`: a package name or a rejection.
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

// For an argument with an `@`: a versioned package, or a rejection if the package descriptor
// library refuses the whole text.
ParsedImportArgument classifyVersionedPackage(std::u16string_view argument) {
    try {
        auto const& rangeFactory = GetComponentVersionRangeFactory();
        return VersionedPackageImportArgument{
            PackageSpecifier(std::u16string(argument), rangeFactory)};
    } catch (InvalidPackageSpecifierException const&) {
        return rejectArgument(argument);
    }
}

} // namespace

ParsedImportArgument classifyArgument(std::u16string_view argument) {
    if (argument.empty()) {
        return IgnoredArgument{};
    }
    if (contains(argument, u'@')) { // before the dot, since `a.b@1.0` is a package
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
    if (argument == u".*") { // rejected, although the message is a warning
        return InvalidImportArgument{malformedWarning(argument)};
    }
    if (contains(argument, u'.')) {
        return classifyLegacyDottedName(argument);
    }
    return InvalidImportArgument{makeMsgHolder<"ImportArgumentWithoutDot">()};
}

} // namespace lf::import
