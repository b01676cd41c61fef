// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/scope_views.hpp>

#include <import_explorer/open_scopes.hpp>

#include <range/v3/iterator/operations.hpp>
#include <range/v3/range/operations.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <type_traits>
#include <unordered_map>
#include <vector>

namespace explorer {

namespace {

using lf::import::FullyQualifiedImportEntry;
using lf::import::IImportList;
using lf::import::PackageImportEntry;
using lf::import::WildcardImportEntry;
using Check = IImportList::CheckAncestorList;

/// To compare so many bytes takes as long as one more entry.
constexpr std::size_t bytesInTheTimeOfAnEntry = 16;

template <typename Entry>
auto entriesOf(IImportList const& list, Check check) {
    if constexpr (std::is_same_v<Entry, PackageImportEntry>) {
        return list.getPackageImportEntries(check);
    } else if constexpr (std::is_same_v<Entry, FullyQualifiedImportEntry>) {
        return list.getFullyQualifiedImportEntries(check);
    } else {
        return list.getWildcardImportEntries(check);
    }
}

class ScopeViewer {
  public:
    ScopeViewer(AnalysedFile& analysedFile, ScopeLists const& scopeLists)
        : file(analysedFile),
          lists(scopeLists),
          scopeOrigins(analysedFile.scopes),
          timeLeft(timeForEachByte * analysedFile.source.size()),
          entriesLeft(analysedFile.source.size() / bytesForEachViewedEntry) {}

    void viewAll() {
        times.reserve(file.scopes.size());
        for (current = 0; current < file.scopes.size(); ++current) {
            AnalysedScope& scope = file.scopes[current];
            scopeOrigins.enter(current);
            rememberOwn();
            bool const isListed = lists.listOf(current) != nullptr;
            if (isListed && scope.level <= deepestViewedLevel && takeTime()) {
                scope.view = viewInherited(scope.scope.parent);
                explainHidden(scope.view->hidden);
            }
        }
    }

  private:
    void rememberOwn() {
        AnalysedScope const& scope = file.scopes[current];
        std::size_t time = 1 + (scope.scope.parent ? times[*scope.scope.parent] : 0);
        for (EntryReference const& entry : scope.entries) {
            scopeOrigins.add(file.at(entry), entry);
            time += 1 + file.at(entry).text.size() / bytesInTheTimeOfAnEntry;
        }
        times.push_back(time);
        if (IImportList const* list = lists.listOf(current)) {
            rememberOwn<PackageImportEntry>(*list, EntryKind::Package);
            rememberOwn<FullyQualifiedImportEntry>(*list, EntryKind::Name);
            rememberOwn<WildcardImportEntry>(*list, EntryKind::Wildcard);
        }
    }

    /// A list has the entries of a kind in the order of the source.
    template <typename Entry>
    void rememberOwn(IImportList const& list, EntryKind kind) {
        auto reference = file.scopes[current].entries.begin();
        for (Entry const& entry : entriesOf<Entry>(list, Check::No)) {
            while (file.at(*reference).kind != kind) {
                ++reference;
            }
            origins.emplace(&entry, *reference++);
        }
    }

    /// Whether there is time to compare the entries of the scope and of those around it.
    bool takeTime() {
        if (times[current] > timeLeft) {
            return false;
        }
        timeLeft -= times[current];
        return true;
    }

    ScopeView viewInherited(std::optional<ScopeIndex> parent) {
        ScopeView view;
        if (parent) {
            IImportList const& own = *lists.listOf(current);
            IImportList const& outer = *lists.listOf(*parent);
            compareViews<PackageImportEntry>(own, outer, view);
            compareViews<FullyQualifiedImportEntry>(own, outer, view);
            compareViews<WildcardImportEntry>(own, outer, view);
        }
        return view;
    }

    /// What a scope sees is its own entries and, behind them, what its parent sees, in the same
    /// order, but for what it hides.
    template <typename Entry>
    void compareViews(IImportList const& own, IImportList const& outer, ScopeView& view) {
        auto visible = entriesOf<Entry>(own, Check::Yes);
        auto inherited = ranges::next(
            visible.begin(), ranges::distance(entriesOf<Entry>(own, Check::No)), visible.end());
        for (Entry const& entry : entriesOf<Entry>(outer, Check::Yes)) {
            if (inherited != visible.end() && &*inherited == &entry) {
                add(view.inherited, origins.at(&entry));
                ++inherited;
            } else {
                add(view.hidden, HiddenEntry{origins.at(&entry), {}});
            }
        }
    }

    template <typename Element>
    void add(Capped<Element>& elements, Element const& element) {
        std::size_t const before = elements.listed.size();
        elements.add(element, std::min(mostViewedEntries, before + entriesLeft));
        entriesLeft -= elements.listed.size() - before;
    }

    void explainHidden(Capped<HiddenEntry>& hidden) const {
        for (HiddenEntry& each : hidden.listed) {
            each.by = findHider(file.at(each.entry)).value();
        }
    }

    std::optional<EntryReference> findHider(AnalysedEntry const& hidden) const {
        if (hidden.introducedName) {
            auto const package = scopeOrigins.findPackage(*hidden.introducedName);
            if (auto const own = scopeOrigins.own(package)) {
                return own;
            }
        }
        return scopeOrigins.own(hidden.kind == EntryKind::Package
                                    ? scopeOrigins.findName(*hidden.introducedName)
                                    : scopeOrigins.findDotted(hidden.text));
    }

    AnalysedFile& file;
    ScopeLists const& lists;
    OpenScopes scopeOrigins;
    /// By the entries of all lists.
    std::unordered_map<void const*, EntryReference> origins;
    ScopeIndex current = 0;
    /// By scope, in entries.
    std::vector<std::size_t> times;
    std::size_t timeLeft;
    std::size_t entriesLeft;
};

} // namespace

void viewScopes(AnalysedFile& file, ScopeLists const& lists) {
    ScopeViewer(file, lists).viewAll();
}

} // namespace explorer
