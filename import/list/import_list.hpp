// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The import list of one scope. lookup.cpp, adding.cpp and enumeration.cpp implement its
/// operations.

#include <import/import_list.hpp>
#include <import/list/list_chain.hpp>
#include <import/list/name_hash.hpp>
#include <import/list/name_index.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace lf::import {

/// The hashes of the names by which entries hide each other; 0 for a name that the kind lacks.
struct EntryHashes {
    NameHash introducedName = 0;
    NameHash rawArgument = 0;
};

/// An entry with its hashes, so that no stored name is hashed again.
template <typename Entry>
struct StoredEntry {
    StoredEntry(Entry&& itsEntry, EntryHashes itsHashes) noexcept
        : entry(std::move(itsEntry)), hashes(itsHashes) {}

    Entry entry;
    EntryHashes hashes;
};

/// Entries are stored by value and never removed; the indexes hold their positions.
class ImportList final : public IImportList {
  public:
    explicit ImportList(std::shared_ptr<IImportList const> itsParent);
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

    /// This list and its ancestors.
    ListChain chain() const noexcept { return ListChain(this); }

    /// The chain without this list.
    ListChain ancestors() const noexcept { return ListChain(enclosing); }

    /// The next list of the chain, or null.
    ImportList const* enclosingList() const noexcept { return enclosing; }

    /// The parent of the outermost list of the chain: a foreign list, or empty.
    std::shared_ptr<IImportList const> const& foreignAncestor() const noexcept {
        return outermost != nullptr ? outermost->parent : parent;
    }

    /// The key of all hashes of names.
    HashKey const& hashKey() const noexcept { return key; }

    // The following functions do not look into ancestors.

    /// The entries of one kind, in order of addition.
    template <typename Entry>
    std::vector<StoredEntry<Entry>> const& ownEntries() const noexcept;

    /// The index by introduced name of the entries of one kind.
    template <typename Entry>
    NameIndex const& indexByName() const noexcept;

    /// The first entry of one kind that introduces \p name, or null.
    template <typename Entry>
    Entry const* findOwn(NameKey const& name) const noexcept {
        if (!indexByName<Entry>().mayHold(name)) {
            return nullptr;
        }
        auto const& entries = ownEntries<Entry>();
        EntryPosition const place = indexByName<Entry>().find(name.hash, [&](EntryPosition each) {
            return isSame(entries[each.position()].entry.getIntroducedName(), name.text);
        });
        return place ? &entries[place.position()].entry : nullptr;
    }

    /// Whether a dotted entry has exactly this raw argument.
    bool holdsRawArgument(NameKey const& rawArgument) const noexcept {
        return rawArguments.mayHold(rawArgument) &&
               rawArguments.find(rawArgument.hash, [&](EntryPosition each) {
                   return visitDotted(each, [&](auto const& entry) {
                       return isSame(entry.getRawArgument(), rawArgument.text);
                   });
               });
    }

    /// Whether a dotted entry starts with this element.
    bool holdsRootElement(NameKey const& rootElement) const noexcept {
        return rootElements.mayHold(rootElement) &&
               rootElements.find(rootElement.hash, [&](EntryPosition each) {
                   return visitDotted(each, [&](auto const& entry) {
                       return isSame(entry.getRootElement(), rootElement.text);
                   });
               });
    }

  private:
    enum class Mode : std::uint8_t { Static, Dynamic };

    using Refusal = std::optional<resource_core::GenericMsgIDHolder>;

    std::size_t numberOfOwnEntries() const noexcept;

    std::optional<FoundImportEntry> findPackage(NameKey const& name, CheckAncestorList check) const;

    // Calls \p visit with the dotted entry at \p position.
    template <typename Visit>
    bool visitDotted(EntryPosition position, Visit visit) const noexcept {
        return position.kind() == EntryPosition::Kind::Named
                   ? visit(fullyQualifiedEntries[position.position()].entry)
                   : visit(wildcardEntries[position.position()].entry);
    }

    Refusal add(ImportEntry&& entry, Mode mode);
    Refusal addPackage(PackageImportEntry&& entry, Mode mode);
    Refusal addFullyQualified(FullyQualifiedImportEntry&& entry);
    Refusal addWildcard(WildcardImportEntry&& entry);
    template <typename Entry>
    void storeDotted(std::vector<StoredEntry<Entry>>& entries, EntryPosition position,
                     std::type_identity_t<Entry>&& entry, EntryHashes hashes, NameKey const& root);
    Refusal refusePackage(PackageImportEntry const& entry, NameKey const& name, Mode mode) const;

    // The members that a walk reads come first, so that they share cache lines.
    ImportList const* enclosing;         ///< the parent, unless that is foreign
    ImportList const* outermost;         ///< of the chain, unless that is this list
    NameIndex packageIndexByName;        ///< introduced names
    NameIndex fullyQualifiedIndexByName; ///< introduced names; the first entry of each
    NameIndex rawArguments;              ///< of every dotted entry
    NameIndex rootElements;              ///< of every dotted entry
    std::vector<StoredEntry<FullyQualifiedImportEntry>> fullyQualifiedEntries;
    std::vector<StoredEntry<WildcardImportEntry>> wildcardEntries;
    std::vector<StoredEntry<PackageImportEntry>> packageEntries;
    HashKey const& key;
    std::shared_ptr<IImportList const> parent;
};

template <>
inline std::vector<StoredEntry<FullyQualifiedImportEntry>> const&
ImportList::ownEntries() const noexcept {
    return fullyQualifiedEntries;
}

template <>
inline std::vector<StoredEntry<WildcardImportEntry>> const&
ImportList::ownEntries() const noexcept {
    return wildcardEntries;
}

template <>
inline std::vector<StoredEntry<PackageImportEntry>> const& ImportList::ownEntries() const noexcept {
    return packageEntries;
}

template <>
inline NameIndex const& ImportList::indexByName<PackageImportEntry>() const noexcept {
    return packageIndexByName;
}

template <>
inline NameIndex const& ImportList::indexByName<FullyQualifiedImportEntry>() const noexcept {
    return fullyQualifiedIndexByName;
}

inline ListChain::Iterator& ListChain::Iterator::operator++() noexcept {
    list = list->enclosingList();
    return *this;
}

/// The list as an ImportList of this copy of the library, or null for a foreign one.
ImportList const* asImportList(IImportList const* list) noexcept;

static_assert(std::forward_iterator<ListChain::Iterator>);

} // namespace lf::import
