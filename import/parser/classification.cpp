// SPDX-License-Identifier: BSL-1.0

#include <import/parser/classification.hpp>

#include <import/make_msg_id.hpp>

#include <type_traits>
#include <utility>

namespace lf::import {

namespace {

using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
using Oxtavel::KeldarComponents::PackageSpecifier;

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
    return {makeMsgHolder<messages::invalidImportArgument>(messages::ImportArgument(argument))};
}

InvalidImportArgument rejectKeyword(std::u16string_view argument, std::u16string_view word) {
    return {makeMsgHolder<messages::keywordInImportArgument>(messages::ImportArgument(argument),
                                                             messages::ReservedWord(word))};
}

resource_core::GenericMsgIDHolder malformedWarning(std::u16string_view argument) {
    return makeMsgHolder<messages::malformedImportArgumentWarning>(
        messages::ImportArgument(argument));
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

FullyQualifiedImportArgument makeFullyQualified(DottedName const& name,
                                                std::u16string&& introducedName) {
    return {.rootElement = std::u16string(name.rootElement),
            .introducedName = std::move(introducedName),
            .rawArgument = std::u16string(name.rawArgument),
            .warning = {}};
}

WildcardImportArgument makeWildcard(DottedName const& name) {
    return {.rootElement = std::u16string(name.rootElement),
            .rawArgument = std::u16string(name.rawArgument),
            .warning = {}};
}

// Moves a result of fewer alternatives into the like-named one; a plain name and a specifier become
// the records of package arguments.
struct ToParsedImportArgument {
    template <typename Record>
    ParsedImportArgument operator()(Record&& record) const {
        return ParsedImportArgument(std::forward<Record>(record));
    }

    ParsedImportArgument operator()(std::u16string&& name) const {
        return PackageNameImportArgument{std::move(name)};
    }

    ParsedImportArgument operator()(PackageSpecifier&& specifier) const {
        return VersionedPackageImportArgument{std::move(specifier)};
    }
};

template <typename Result>
ParsedImportArgument toParsedImportArgument(Result&& result) {
    static_assert(std::is_rvalue_reference_v<Result&&>);
    return std::visit(ToParsedImportArgument{}, std::forward<Result>(result));
}

bool contains(std::u16string_view text, char16_t unit) noexcept {
    return text.find(unit) != std::u16string_view::npos;
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
        return toParsedImportArgument(classifyVersionedPackage(argument));
    }
    if (contains(argument, u'.')) {
        return toParsedImportArgument(classifyDottedName(argument));
    }
    if (argument == asWord) {
        return AsClauseImportArgument{};
    }
    return toParsedImportArgument(classifyPlainName(argument));
}

ParsedImportArgument classifyLegacyArgument(std::u16string_view argument) {
    if (argument.empty()) {
        return IgnoredArgument{};
    }
    if (argument == u".*") { // nothing left to import, yet the severity stays a warning's
        return InvalidImportArgument{malformedWarning(argument)};
    }
    if (contains(argument, u'.')) {
        return toParsedImportArgument(classifyLegacyDottedName(argument));
    }
    return InvalidImportArgument{makeMsgHolder<messages::importArgumentWithoutDot>()};
}

DottedNameResult classifyDottedName(std::u16string_view argument) {
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

DottedNameResult classifyLegacyDottedName(std::u16string_view argument) {
    DottedName const name = walkSegments(argument);
    if (name.isWildcard()) {
        WildcardImportArgument wildcard = makeWildcard(name);
        if (name.hasBadSegment) {
            wildcard.warning = malformedWarning(argument);
        }
        return wildcard;
    }
    std::u16string introducedName(name.lastSegment);
    bool const reserved = isReservedWord(introducedName);
    FullyQualifiedImportArgument fullyQualified =
        makeFullyQualified(name, std::move(introducedName));
    if (reserved) {
        fullyQualified.warning = makeMsgHolder<messages::keywordInImportArgumentWarning>(
            messages::ImportArgument(argument), messages::ReservedWord(name.lastSegment));
    }
    return fullyQualified;
}

PlainNameResult classifyPlainName(std::u16string_view word) {
    if (!lf::util::isValidIdentifier(word)) {
        return rejectArgument(word);
    }
    std::u16string name(word);
    if (isReservedWord(name)) {
        return rejectKeyword(word, word);
    }
    return name;
}

VersionedPackageResult classifyVersionedPackage(std::u16string_view argument) {
    try {
        auto const& rangeFactory = GetComponentVersionRangeFactory();
        return PackageSpecifier(std::u16string(argument), rangeFactory);
    } catch (InvalidPackageSpecifierException const&) {
        return rejectArgument(argument);
    }
}

} // namespace lf::import
