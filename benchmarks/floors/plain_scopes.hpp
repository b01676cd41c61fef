// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Nested scopes as plain structs with standard containers, enumerated by a hand-written loop and
/// by nested views, both with the hiding rules of import lists.

#include "workload.hpp"

#include <import/entries.hpp>

#include <range/v3/view/any_view.hpp>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace floors {

/// A name to look up in sets, hashed once for all of them.
struct HashedName {
    std::u16string_view text;
    std::size_t hash;

    explicit HashedName(std::u16string_view name)
        : text(name), hash(std::hash<std::u16string_view>{}(name)) {}
};

struct NameHash {
    using is_transparent = void;

    std::size_t operator()(std::u16string const& name) const {
        return std::hash<std::u16string>{}(name);
    }

    std::size_t operator()(HashedName const& name) const noexcept { return name.hash; }
};

struct NameEqual {
    using is_transparent = void;

    bool operator()(std::u16string const& left, std::u16string const& right) const noexcept {
        return left == right;
    }

    bool operator()(HashedName const& left, std::u16string const& right) const noexcept {
        return left.text == right;
    }

    bool operator()(std::u16string const& left, HashedName const& right) const noexcept {
        return left == right.text;
    }
};

using NameSet = std::unordered_set<std::u16string, NameHash, NameEqual>;

/// One scope.
struct PlainScope {
    PlainScope const* parent = nullptr;
    NameSet packageNames;
    NameSet fullyQualifiedNames;
    NameSet rawArguments;
    std::vector<lf::import::PackageImportEntry> packages;
    std::vector<lf::import::FullyQualifiedImportEntry> fullyQualified;
};

/// The names of an entry that decide whether a scope hides it, hashed once.
template <typename Entry>
struct HidingNames;

template <>
struct HidingNames<lf::import::PackageImportEntry> {
    static constexpr auto entries = &PlainScope::packages;

    HashedName name;

    explicit HidingNames(lf::import::PackageImportEntry const& entry)
        : name(entry.getIntroducedName()) {}

    bool areHiddenBy(PlainScope const& scope) const {
        return scope.packageNames.contains(name) || scope.fullyQualifiedNames.contains(name);
    }
};

template <>
struct HidingNames<lf::import::FullyQualifiedImportEntry> {
    static constexpr auto entries = &PlainScope::fullyQualified;

    HashedName name;
    HashedName rawArgument;

    explicit HidingNames(lf::import::FullyQualifiedImportEntry const& entry)
        : name(entry.getIntroducedName()), rawArgument(entry.getRawArgument()) {}

    bool areHiddenBy(PlainScope const& scope) const {
        return scope.packageNames.contains(name) || scope.rawArguments.contains(rawArgument);
    }
};

/// Nested scopes, enumerated from the innermost one.
class PlainScopes {
  public:
    explicit PlainScopes(workload::Scopes const& imports);

    /// Calls \p visit with each visible entry.
    template <typename Entry, typename Visit>
    void forEachVisible(Visit visit) const {
        PlainScope const* const asked = scopes.back().get();
        for (PlainScope const* scope = asked; scope != nullptr; scope = scope->parent) {
            for (Entry const& entry : scope->*HidingNames<Entry>::entries) {
                if (scope == asked || !isHiddenOnTheWay(entry, asked, scope)) {
                    visit(entry);
                }
            }
        }
    }

    /// The visible entries, as each scope would combine its own with its parent's.
    template <typename Entry>
    ranges::any_view<Entry const&, ranges::category::forward> nestedViews() const;

  private:
    template <typename Entry>
    static bool isHiddenOnTheWay(Entry const& entry, PlainScope const* first,
                                 PlainScope const* last) {
        HidingNames<Entry> const names(entry);
        for (PlainScope const* scope = first; scope != last; scope = scope->parent) {
            if (names.areHiddenBy(*scope)) {
                return true;
            }
        }
        return false;
    }

    std::vector<std::unique_ptr<PlainScope>> scopes; ///< outermost first
};

extern template ranges::any_view<lf::import::PackageImportEntry const&, ranges::category::forward>
PlainScopes::nestedViews<lf::import::PackageImportEntry>() const;

extern template ranges::any_view<lf::import::FullyQualifiedImportEntry const&,
                                 ranges::category::forward>
PlainScopes::nestedViews<lf::import::FullyQualifiedImportEntry>() const;

} // namespace floors
