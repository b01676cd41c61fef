// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Equality, hashes and fingerprints of entries and lists, for incremental builds.

#include <host/text.hpp>

#include <import/entries.hpp>
#include <import/import_list.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace lf::import::host {

/// Identifies the contents of an import or a list. It is the same in every run and on every
/// machine. Different contents can have the same fingerprint by chance; such contents can also be
/// constructed deliberately.
using Fingerprint = std::uint64_t;

namespace detail {

/// Spreads every bit of \p value over all bits, so that a sum of results depends on all of them.
constexpr Fingerprint mix(Fingerprint value) noexcept {
    value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31U);
}

/// Combines \p seed with \p text and its length (FNV-1a over the bytes of the code units).
constexpr Fingerprint mixText(Fingerprint seed, std::u16string_view text) noexcept {
    for (char16_t const unit : text) {
        seed = (seed ^ (unit & 0xFFU)) * 0x100000001B3U;
        seed = (seed ^ (unit >> 8U)) * 0x100000001B3U;
    }
    return mix(seed ^ text.size());
}

} // namespace detail

/// The same for entries with the same introduced name, package and versions.
inline Fingerprint fingerprintOf(PackageImportEntry const& entry) {
    std::u16string const specifier(entry.getPackageSpecifier().ToString());
    return detail::mixText(detail::mixText('p', entry.getIntroducedName()), specifier);
}

/// The same for entries with the same three texts.
inline Fingerprint fingerprintOf(FullyQualifiedImportEntry const& entry) noexcept {
    return detail::mixText(
        detail::mixText(detail::mixText('f', entry.getIntroducedName()), entry.getRawArgument()),
        entry.getRootElement());
}

/// The same for entries with the same two texts.
inline Fingerprint fingerprintOf(WildcardImportEntry const& entry) noexcept {
    return detail::mixText(detail::mixText('w', entry.getRawArgument()), entry.getRootElement());
}

/// As for the entry that \p entry holds.
///
/// \throws std::bad_variant_access for a valueless entry.
inline Fingerprint fingerprintOf(ImportEntry const& entry) {
    return std::visit([](auto const& held) { return fingerprintOf(held); }, entry);
}

namespace detail {

/// The fingerprint of the entries of \p list without its ancestors. Only the first of several fully
/// qualified entries that introduce one name is found by lookups, so it counts differently.
inline Fingerprint fingerprintOfOwnEntries(IImportList const& list) {
    constexpr auto own = IImportList::CheckAncestorList::No;
    Fingerprint sum = 0;
    for (PackageImportEntry const& entry : list.getPackageImportEntries(own)) {
        sum += fingerprintOf(entry);
    }
    for (WildcardImportEntry const& entry : list.getWildcardImportEntries(own)) {
        sum += fingerprintOf(entry);
    }
    for (FullyQualifiedImportEntry const& entry : list.getFullyQualifiedImportEntries(own)) {
        Fingerprint const fingerprint = fingerprintOf(entry);
        auto const first = list.findFullyQualifiedImportEntry(entry.getIntroducedName(), own);
        bool const isFirst = first && first->rawArgument.data() == entry.getRawArgument().data();
        sum += isFirst ? mix(fingerprint) : fingerprint;
    }
    return sum;
}

} // namespace detail

/// The same for lists with the same entries in any order, if the same entries are found by lookups:
/// of two imports that introduce one name, the first one is found.
///
/// With Yes as \p check, the ancestors of \p list and their nesting are included.
inline Fingerprint fingerprintOf(IImportList const& list, IImportList::CheckAncestorList check) {
    Fingerprint result = detail::fingerprintOfOwnEntries(list);
    if (check != IImportList::CheckAncestorList::Yes) {
        return result;
    }
    for (auto ancestor = list.getParent(); ancestor != nullptr; ancestor = ancestor->getParent()) {
        // The addition makes an empty ancestor count.
        result = detail::mix(result + 1) + detail::fingerprintOfOwnEntries(*ancestor);
    }
    return result;
}

/// Whether two entries are of the same kind and have the same texts.
inline bool isSameImport(ImportEntry const& left, ImportEntry const& right) {
    if (auto const* const package = std::get_if<PackageImportEntry>(&left)) {
        auto const* const other = std::get_if<PackageImportEntry>(&right);
        return other != nullptr && package->getIntroducedName() == other->getIntroducedName() &&
               package->getPackageSpecifier().ToString() == other->getPackageSpecifier().ToString();
    }
    if (auto const* const name = std::get_if<FullyQualifiedImportEntry>(&left)) {
        auto const* const other = std::get_if<FullyQualifiedImportEntry>(&right);
        return other != nullptr && name->getIntroducedName() == other->getIntroducedName() &&
               name->getRawArgument() == other->getRawArgument() &&
               name->getRootElement() == other->getRootElement();
    }
    auto const& wildcard = std::get<WildcardImportEntry>(left);
    auto const* const other = std::get_if<WildcardImportEntry>(&right);
    return other != nullptr && wildcard.getRawArgument() == other->getRawArgument() &&
           wildcard.getRootElement() == other->getRootElement();
}

/// Compares entries in a hashed container: `std::unordered_set<ImportEntry, ImportEntryHash,
/// ImportEntryEqual>`.
struct ImportEntryEqual {
    /// As isSameImport.
    bool operator()(ImportEntry const& left, ImportEntry const& right) const {
        return isSameImport(left, right);
    }
};

/// Hashes entries for a hashed container.
struct ImportEntryHash {
    /// As fingerprintOf, or its lower bits where std::size_t is shorter.
    std::size_t operator()(ImportEntry const& entry) const {
        return static_cast<std::size_t>(fingerprintOf(entry));
    }
};

} // namespace lf::import::host
