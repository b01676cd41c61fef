// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The list of one scope's imports, chained to the list of the enclosing scope.

#include <import/entries.hpp>
#include <import/export.hpp>
#include <import/platform.hpp>

#if !defined(NDEBUG) && !defined(__cpp_rtti) && !defined(_CPPRTTI)
#error                                                                                             \
    "import/import_list.hpp needs run-time type information: the views of its getters do unless \
NDEBUG is defined. Compile without -fno-rtti or with -DNDEBUG; the other headers need neither."
#endif

#include <range/v3/range_fwd.hpp>
#include <range/v3/view/any_view.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace lf::import {

/// Where a lookup found an entry.
enum class EntryOrigin : std::int32_t {
    /// In the list that was asked.
    ThisList = 0,
    /// In an ancestor, at any distance.
    Ancestor = 1,
};

/// A package entry that a lookup found.
struct FoundImportEntry {
    /// Owned by the list that holds it; valid until that list is added to or destroyed.
    PackageImportEntry const& entry;
    /// Which list holds it.
    EntryOrigin origin;
};

/// A fully qualified import that a lookup found.
struct FoundFullyQualifiedName {
    /// The argument as it was written; a view into the stored entry, valid until its list is added
    /// to or destroyed.
    std::u16string_view rawArgument;
    /// Which list holds the entry.
    EntryOrigin origin;
};

/// The imports of one scope. The order of the virtual operations is part of the interface.
///
/// A list reads its parent and never changes it. Lists are not synchronised: several threads may
/// read them while no thread adds to them or to an ancestor. An operation that throws leaves the
/// list unchanged.
///
/// The parent of a library list may be a *foreign* list: a host's own implementation of this
/// interface, or a list of a second copy of the library. The library uses it through the interface
/// and relies on three things:
/// - The list that getParent returns lives as long as the list that returned it. If a foreign list
/// returns the only reference to its parent, the results of a lookup beyond it dangle.
/// - Parents form no cycle. Otherwise lookups do not end.
/// - During a lookup, the same question always has the same answer: a lookup asks it only once.
///
/// The library follows parents in loops. Foreign lists that pass questions on to their parents, or
/// that own them when they are destroyed, nest calls instead, so the stack limits their number in a
/// chain.
class GLEIGEM_EXPORT IImportList {
  public:
    /// Whether an operation includes the ancestors of the list. Any other value means No.
    enum class CheckAncestorList : std::int32_t {
        /// This list only.
        No = 0,
        /// This list and its ancestors.
        Yes = 1,
    };

    IImportList() = default;
    IImportList(IImportList const&) = default;
    IImportList& operator=(IImportList const&) = default;
    virtual ~IImportList();

    /// Stores an entry of a command that takes effect when the program reaches it.
    ///
    /// Like addStaticImportEntry, but a package may introduce a name that a dotted import of this
    /// list starts with.
    virtual std::optional<resource_core::GenericMsgIDHolder>
    addDynamicImportEntry(ImportEntry&& entry) = 0;

    /// Stores an entry unless it conflicts with the existing imports of the scope.
    ///
    /// A dotted import whose raw argument this list already has is accepted but not stored again.
    ///
    /// \param entry moved from only when it is stored.
    /// \returns nothing if the entry was accepted, else the reason why it was refused.
    /// \throws std::bad_alloc, std::bad_variant_access for a valueless entry, std::length_error for
    ///         more than 2,147,483,647 entries of a kind, and what a foreign ancestor throws.
    virtual std::optional<resource_core::GenericMsgIDHolder>
    addStaticImportEntry(ImportEntry&& entry) = 0;

    /// The package import that introduces \p name.
    ///
    /// A fully qualified import of the name in this list hides the packages of the ancestors.
    virtual std::optional<FoundImportEntry>
    findPackageImportEntry(std::u16string_view name, CheckAncestorList check) const = 0;

    /// The first fully qualified import that introduces \p name.
    ///
    /// A package import of the name in this list hides the fully qualified imports of the
    /// ancestors.
    virtual std::optional<FoundFullyQualifiedName>
    findFullyQualifiedImportEntry(std::u16string_view name, CheckAncestorList check) const = 0;

    /// The visible fully qualified entries: this list's in order of addition, then outward from
    /// list to list.
    ///
    /// An ancestor's entry is hidden by a list on the way that has a package of its introduced name
    /// or an entry with its raw argument. The view is lazy and copies nothing; it is valid while
    /// this list and its ancestors live and are not added to.
    ///
    /// A whole enumeration tests each entry at most once for each list on the way to it: the time
    /// is proportional to entries times lists, and no memory is kept. Starting one tests the hidden
    /// entries before the first visible one.
    virtual ranges::any_view<FullyQualifiedImportEntry const&, ranges::category::forward>
    getFullyQualifiedImportEntries(CheckAncestorList check) const = 0;

    /// The visible wildcard entries, in the order and with the validity of
    /// getFullyQualifiedImportEntries.
    ///
    /// An ancestor's entry is hidden by a list on the way that has an entry with its raw argument.
    virtual ranges::any_view<WildcardImportEntry const&, ranges::category::forward>
    getWildcardImportEntries(CheckAncestorList check) const = 0;

    /// The visible package entries, in the order and with the validity of
    /// getFullyQualifiedImportEntries.
    ///
    /// An ancestor's entry is hidden by a list on the way that has a package or a fully qualified
    /// entry of its introduced name.
    virtual ranges::any_view<PackageImportEntry const&, ranges::category::forward>
    getPackageImportEntries(CheckAncestorList check) const = 0;

    /// The list of the enclosing scope; null for an outermost list.
    virtual std::shared_ptr<IImportList const> getParent() const = 0;

    /// An independent copy that shares the parent.
    virtual std::unique_ptr<IImportList> clone() const = 0;

    /// Whether this list has no entries and, with Yes, no ancestor has any.
    virtual bool isEmpty(CheckAncestorList check) const = 0;

    /// The number of entries of this list and, with Yes, of all ancestors, hidden ones included.
    virtual std::size_t getNumberOfEntries(CheckAncestorList check) const = 0;
};

/// Creates an empty list for a scope within the scope of \p parent, or for an outermost scope if
/// \p parent is null. The list shares ownership of its parent.
///
/// \throws std::bad_alloc; std::system_error if the operating system has no random numbers for the
///         key with which this process hashes names.
GLEIGEM_EXPORT std::unique_ptr<IImportList>
createImportList(std::shared_ptr<IImportList const> parent);

} // namespace lf::import
