// SPDX-License-Identifier: BSL-1.0
#include "floors/scope_maps.hpp"

#include <support/make_entries.hpp>

#include <utility>

namespace floors {

using lf::import::EntryOrigin;
using lf::import::FoundFullyQualifiedName;
using lf::import::FoundImportEntry;

template <typename Map>
ScopeMaps<Map>::ScopeMaps(workload::Scopes const& imports) {
    Scope const* parent = nullptr;
    for (workload::Imports const& own : imports) {
        auto scope = std::make_unique<Scope>();
        scope->parent = std::exchange(parent, scope.get());
        for (std::u16string const& package : own.packages) {
            scope->introduced.emplace(
                package, Introduced{Introduced::Kind::Package, scope->packages.size()});
            scope->packages.push_back(support::makePackage(package));
        }
        for (std::u16string const& name : own.fullyQualified) {
            scope->introduced.emplace(
                workload::introducedName(name),
                Introduced{Introduced::Kind::FullyQualified, scope->fullyQualified.size()});
            scope->fullyQualified.push_back(support::makeName(name));
        }
        scopes.push_back(std::move(scope));
    }
}

// An import of the other kind hides those of the ancestors only in the scope that the lookup starts
// from.
template <typename Map>
std::optional<typename ScopeMaps<Map>::Place> ScopeMaps<Map>::find(std::u16string_view name,
                                                                   Introduced::Kind kind) const {
    Scope const* const asked = scopes.back().get();
    for (Scope const* scope = asked; scope != nullptr; scope = scope->parent) {
        auto const found = scope->introduced.find(name);
        if (found == scope->introduced.end()) {
            continue;
        }
        if (found->second.kind == kind) {
            return Place{scope, found->second.position};
        }
        if (scope == asked) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

template <typename Map>
std::optional<FoundImportEntry> ScopeMaps<Map>::findPackage(std::u16string_view name) const {
    auto const place = find(name, Introduced::Kind::Package);
    if (!place) {
        return std::nullopt;
    }
    return FoundImportEntry{place->scope->packages[place->position],
                            place->scope == scopes.back().get() ? EntryOrigin::ThisList
                                                                : EntryOrigin::Ancestor};
}

template <typename Map>
std::optional<FoundFullyQualifiedName>
ScopeMaps<Map>::findFullyQualified(std::u16string_view name) const {
    auto const place = find(name, Introduced::Kind::FullyQualified);
    if (!place) {
        return std::nullopt;
    }
    return FoundFullyQualifiedName{place->scope->fullyQualified[place->position].getRawArgument(),
                                   place->scope == scopes.back().get() ? EntryOrigin::ThisList
                                                                       : EntryOrigin::Ancestor};
}

template class ScopeMaps<UnorderedMap>;
template class ScopeMaps<AbslMap>;

} // namespace floors
