// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The import list of one scope. Its operations stand in lookup.cpp, adding.cpp and
/// enumeration.cpp.

#include <import/import_list.hpp>
#include <import/list/name_key.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace lf::import {

class ImportList;

/// Lists from one of them outward: ImportLists first, then perhaps a list of another make, behind
/// which nothing is known.
///
/// Found out once for each list. Asking each list on the way for its parent and that for its type
/// would make a lookup in sixteen nested lists take three to seven times as long.
struct ListRun {
    ImportList const* first = nullptr;
    IImportList const* foreign = nullptr;

    /// The run that starts with \p list, which may be null.
    static ListRun from(IImportList const* list) noexcept;
};

/// Entries are stored by value and never removed; the hashed containers are indexes into them.
class ImportList final : public IImportList {
  public:
    explicit ImportList(std::shared_ptr<IImportList const> enclosing) noexcept;
    ImportList(ImportList const& other) = default;
    ImportList& operator=(ImportList const&) = delete;
    ~ImportList() override;

    std::optional<resource_core::GenericMsgIDHolder>
    addDynamicImportEntry(ImportEntry&& entry) override;
    std::optional<resource_core::GenericMsgIDHolder>
    addStaticImportEntry(ImportEntry&& entry) override;

    std::optional<FoundImportEntry> findPackageImportEntry(std::u16string_view name,
                                                           CheckAncestorList check) const override;
    std::optional<FoundFullyQualifiedName>
    findFullyQualifiedImportEntry(std::u16string_view name, CheckAncestorList check) const override;

    ranges::any_view<FullyQualifiedImportEntry const&, ranges::category::forward>
    getFullyQualifiedImportEntries(CheckAncestorList check) const override;
    ranges::any_view<WildcardImportEntry const&, ranges::category::forward>
    getWildcardImportEntries(CheckAncestorList check) const override;
    ranges::any_view<PackageImportEntry const&, ranges::category::forward>
    getPackageImportEntries(CheckAncestorList check) const override;

    std::shared_ptr<IImportList const> getParent() const override;
    std::unique_ptr<IImportList> clone() const override;
    bool isEmpty(CheckAncestorList check) const override;
    std::size_t getNumberOfEntries(CheckAncestorList check) const override;

    // This list alone, for the operations that walk the chain.

    /// The parent and what is known of the lists beyond it.
    ListRun const& ancestors() const noexcept { return enclosingLists; }

    /// The entries of this list of one kind.
    template <typename Entry>
    std::vector<Entry> const& ownEntries() const noexcept;

    /// The package entry of this list that introduces \p name, or null.
    PackageImportEntry const* findOwnPackage(NameKey const& name) const noexcept {
        return packageFilter.mayHold(name) ? probePackages(name) : nullptr;
    }

    /// The first fully qualified entry of this list that introduces \p name, or null.
    FullyQualifiedImportEntry const* findOwnFullyQualified(NameKey const& name) const noexcept {
        return fullyQualifiedFilter.mayHold(name) ? probeFullyQualified(name) : nullptr;
    }

    /// Whether a dotted entry of this list has exactly this raw argument.
    bool holdsRawArgument(NameKey const& rawArgument) const noexcept {
        return rawArgumentFilter.mayHold(rawArgument) && probeRawArguments(rawArgument);
    }

  private:
    using Refusal = std::optional<resource_core::GenericMsgIDHolder>;
    using PackageConflictCheck = Refusal (ImportList::*)(PackageImportEntry const& entry,
                                                         NameKey const& name) const;

    std::size_t numberOfOwnEntries() const noexcept;

    // What the hashed containers say of a name that passed the filter.
    PackageImportEntry const* probePackages(NameKey const& name) const noexcept;
    FullyQualifiedImportEntry const* probeFullyQualified(NameKey const& name) const noexcept;
    bool probeRawArguments(NameKey const& rawArgument) const noexcept;

    Refusal checkDynamicPackage(PackageImportEntry const& entry, NameKey const& name) const;
    Refusal checkStaticPackage(PackageImportEntry const& entry, NameKey const& name) const;
    Refusal add(ImportEntry&& entry, PackageConflictCheck check);
    Refusal addPackage(PackageImportEntry&& entry, PackageConflictCheck check);
    Refusal addFullyQualified(FullyQualifiedImportEntry&& entry);
    Refusal addWildcard(WildcardImportEntry&& entry);

    std::vector<FullyQualifiedImportEntry> fullyQualifiedEntries; ///< in order of addition
    std::vector<WildcardImportEntry> wildcardEntries;             ///< in order of addition
    std::vector<PackageImportEntry> packageEntries;               ///< in order of addition
    NameIndex packageIndexByName;                                 ///< introduced name to position
    NameIndex fullyQualifiedIndexByName; ///< introduced name to position of the first such entry
    NameSet rawArguments;                ///< of every dotted entry
    NameSet rootElements;                ///< of every dotted entry
    std::shared_ptr<IImportList const> parent;

    // Derived from the members above; what a walk reads of a list stands together.
    ListRun enclosingLists;
    NameFilter packageFilter;        ///< of the keys of packageIndexByName
    NameFilter fullyQualifiedFilter; ///< of the keys of fullyQualifiedIndexByName
    NameFilter rawArgumentFilter;    ///< of rawArguments
};

template <>
inline std::vector<FullyQualifiedImportEntry> const& ImportList::ownEntries() const noexcept {
    return fullyQualifiedEntries;
}

template <>
inline std::vector<WildcardImportEntry> const& ImportList::ownEntries() const noexcept {
    return wildcardEntries;
}

template <>
inline std::vector<PackageImportEntry> const& ImportList::ownEntries() const noexcept {
    return packageEntries;
}

} // namespace lf::import
