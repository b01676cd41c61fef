// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/scope_views.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace explorer {

namespace {

/// Comparing this many bytes takes about as long as one more entry.
constexpr std::size_t bytesInTheTimeOfAnEntry = 16;

class ScopeViewer {
  public:
    ScopeViewer(AnalysedFile& analysedFile, ImportScopes const& scopesWithImports)
        : file(analysedFile),
          importScopes(scopesWithImports),
          timeLeft(timeForEachByte * analysedFile.source.size()),
          entriesLeft(analysedFile.source.size() / bytesForEachViewedEntry) {}

    void viewAll() {
        times.reserve(file.scopes.size());
        for (ScopeIndex index = 0; index < file.scopes.size(); ++index) {
            AnalysedScope& scope = file.scopes[index];
            times.push_back(timeFor(scope));
            ImportScope const* const imports = importScopes[index].get();
            if (imports != nullptr && scope.level <= deepestViewedLevel && takeTime(index)) {
                scope.view = viewOf(*imports);
            }
        }
    }

  private:
    /// The time to compare the entries of \p scope and its enclosing scopes, in entries.
    std::size_t timeFor(AnalysedScope const& scope) const {
        std::size_t time = 1 + (scope.scope.parent ? times[*scope.scope.parent] : 0);
        for (EntryReference const& entry : scope.entries) {
            time += 1 + file.at(entry).text.size() / bytesInTheTimeOfAnEntry;
        }
        return time;
    }

    bool takeTime(ScopeIndex index) {
        if (times[index] > timeLeft) {
            return false;
        }
        timeLeft -= times[index];
        return true;
    }

    ScopeView viewOf(ImportScope const& scope) {
        ScopeView view;
        for (EntryKind const kind :
             {EntryKind::Package, EntryKind::FullyQualified, EntryKind::Wildcard}) {
            for (auto const& [imported, distance] : scope.visible(kind)) {
                if (distance > 0) {
                    add(view.inherited, imported->place);
                }
            }
        }
        for (auto const& [hidden, by] : scope.hidden()) {
            add(view.hidden, HiddenEntry{hidden.imported->place, by->place});
        }
        return view;
    }

    template <typename Element>
    void add(Capped<Element>& elements, Element const& element) {
        std::size_t const before = elements.listed.size();
        elements.add(element, std::min(mostViewedEntries, before + entriesLeft));
        entriesLeft -= elements.listed.size() - before;
    }

    AnalysedFile& file;
    ImportScopes const& importScopes;
    /// The result of timeFor() for each scope.
    std::vector<std::size_t> times;
    std::size_t timeLeft;
    std::size_t entriesLeft;
};

} // namespace

void viewScopes(AnalysedFile& file, ImportScopes const& importScopes) {
    ScopeViewer(file, importScopes).viewAll();
}

} // namespace explorer
