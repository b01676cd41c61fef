// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Nested scopes as plain structs with the hashed containers of import lists, enumerated by a
/// hand-written loop and by nested views, both with the same hiding tests.

#include "workload.hpp"

#include <import/entries.hpp>
#include <import/list/name_key.hpp>

#include <range/v3/view/any_view.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace floors {

/// A name as the hashed containers of import lists are asked for it.
using Name = lf::import::NameKey;

/// One scope.
struct PlainScope {
    PlainScope const* parent = nullptr;
    lf::import::NameFilter packageFilter;
    lf::import::NameFilter fullyQualifiedFilter;
    lf::import::NameFilter rawArgumentFilter;
    lf::import::NameIndex packageIndexByName;
    lf::import::NameIndex fullyQualifiedIndexByName;
    lf::import::NameSet rawArguments;
    std::vector<lf::import::PackageImportEntry> packages;
    std::vector<lf::import::FullyQualifiedImportEntry> fullyQualified;

    bool introducesPackage(Name const& name) const {
        return packageFilter.mayHold(name) && packageIndexByName.contains(name);
    }

    bool introducesFullyQualified(Name const& name) const {
        return fullyQualifiedFilter.mayHold(name) && fullyQualifiedIndexByName.contains(name);
    }

    bool holdsRawArgument(Name const& rawArgument) const {
        return rawArgumentFilter.mayHold(rawArgument) && rawArguments.contains(rawArgument);
    }
};

/// The names of an entry that decide whether a scope hides it, hashed once.
template <typename Entry>
struct HidingNames;

template <>
struct HidingNames<lf::import::PackageImportEntry> {
    static constexpr auto entries = &PlainScope::packages;

    Name name;

    explicit HidingNames(lf::import::PackageImportEntry const& entry)
        : name(entry.getIntroducedName()) {}

    bool areHiddenBy(PlainScope const& scope) const {
        return scope.introducesPackage(name) || scope.introducesFullyQualified(name);
    }
};

template <>
struct HidingNames<lf::import::FullyQualifiedImportEntry> {
    static constexpr auto entries = &PlainScope::fullyQualified;

    Name name;
    Name rawArgument;

    explicit HidingNames(lf::import::FullyQualifiedImportEntry const& entry)
        : name(entry.getIntroducedName()), rawArgument(entry.getRawArgument()) {}

    bool areHiddenBy(PlainScope const& scope) const {
        return scope.introducesPackage(name) || scope.holdsRawArgument(rawArgument);
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

    /// The visible entries as each scope would compose them of its own and its parent's.
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
