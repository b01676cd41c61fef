// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The import lists of a script's scopes, with the way back from their entries to the source.

#include <import_explorer/analysis.hpp>
#include <import_explorer/open_scopes.hpp>
#include <import_explorer/script_reader.hpp>

#include <import/import_list.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace explorer {

/// What became of an entry that was to be added.
struct Addition {
    EntryOutcome outcome = EntryOutcome::Added;
    /// The one that it repeats or conflicts with.
    std::optional<EntryReference> earlier;
    /// Why it was refused.
    std::optional<resource_core::GenericMsgIDHolder> refusal;
};

/// A list for each scope, chained to that of the nearest scope around it that imports something.
/// The lists decide; what stands beside them only tells where an entry that they name comes from.
class ScopeLists {
  public:
    ScopeLists(std::span<AnalysedScope const> scopes, std::span<Statement const> statements);

    /// The list of \p scope; nothing for a scope that lies too deep.
    lf::import::IImportList const* listOf(ScopeIndex scope) const { return lists.at(scope).get(); }

    /// Makes \p scope, which has a list, the one that is asked. Scopes are entered in their order.
    void enter(ScopeIndex scope);

    /// Adds \p entry, which is known as \p reference from then on and described by \p described.
    Addition add(lf::import::ImportEntry&& entry, bool isDynamic, AnalysedEntry const& described,
                 EntryReference reference);

    /// The package and the fully qualified name that introduce \p name, as far as there are, the
    /// nearest first.
    std::vector<EntryReference> find(std::string_view name) const;

    /// The wildcards that the scope sees, outward, which may all supply a name.
    Capped<EntryReference> reachWildcards() { return origins.reachWildcards(); }

    /// The packages and names of the scope and of those around it, outermost first.
    std::span<EntryReference const> named() const noexcept { return origins.named(); }

    /// The wildcards that were reached. To be asked at the end.
    std::span<EntryReference const> reachedWildcards();

  private:
    std::optional<EntryReference> findConflict(AnalysedEntry const& refused) const;

    std::vector<std::shared_ptr<lf::import::IImportList>> lists;
    OpenScopes origins;
    ScopeIndex current = 0;
};

} // namespace explorer
