// SPDX-License-Identifier: BSL-1.0
#include "floors/plain_scopes.hpp"

#include <support/make_entries.hpp>

#include <range/v3/view/concat.hpp>
#include <range/v3/view/ref.hpp>
#include <range/v3/view/remove_if.hpp>

#include <utility>

namespace floors {

using lf::import::FullyQualifiedImportEntry;
using lf::import::PackageImportEntry;

namespace {

template <typename Entry>
using AnyView = ranges::any_view<Entry const&, ranges::category::forward>;

void addPackage(PlainScope& scope, std::u16string const& name) {
    scope.packageNames.insert(name);
    scope.packages.push_back(support::makePackage(name));
}

void addFullyQualified(PlainScope& scope, std::u16string const& rawArgument) {
    scope.fullyQualifiedNames.insert(workload::introducedName(rawArgument));
    scope.rawArguments.insert(rawArgument);
    scope.fullyQualified.push_back(support::makeName(rawArgument));
}

template <typename Entry>
AnyView<Entry> visibleFrom(PlainScope const& scope) {
    AnyView<Entry> own = ranges::ref_view(scope.*HidingNames<Entry>::entries);
    if (scope.parent == nullptr) {
        return own;
    }
    auto const isHidden = [&scope](Entry const& entry) {
        return HidingNames<Entry>(entry).areHiddenBy(scope);
    };
    return ranges::concat_view(std::move(own),
                               ranges::remove_if_view(visibleFrom<Entry>(*scope.parent), isHidden));
}

} // namespace

PlainScopes::PlainScopes(workload::Scopes const& imports) {
    PlainScope const* parent = nullptr;
    for (workload::Imports const& own : imports) {
        auto scope = std::make_unique<PlainScope>();
        scope->parent = std::exchange(parent, scope.get());
        for (std::u16string const& name : own.packages) {
            addPackage(*scope, name);
        }
        for (std::u16string const& rawArgument : own.fullyQualified) {
            addFullyQualified(*scope, rawArgument);
        }
        scopes.push_back(std::move(scope));
    }
}

template <typename Entry>
AnyView<Entry> PlainScopes::nestedViews() const {
    return visibleFrom<Entry>(*scopes.back());
}

template AnyView<PackageImportEntry> PlainScopes::nestedViews<PackageImportEntry>() const;
template AnyView<FullyQualifiedImportEntry>
PlainScopes::nestedViews<FullyQualifiedImportEntry>() const;

} // namespace floors
