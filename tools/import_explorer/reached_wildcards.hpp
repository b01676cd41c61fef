// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The wildcards that the uses of a file reach.

#include <import_explorer/analysis.hpp>
#include <import_explorer/script_reader.hpp>

#include <cstddef>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

/// Records which wildcards the uses of a file reach; each use reaches all that are visible.
///
/// Follows the scopes in their order in the file, so that the time of a use does not depend on the
/// number of wildcards or scopes.
class ReachedWildcards {
  public:
    /// \param scopes in their order in the file.
    explicit ReachedWildcards(std::span<AnalysedScope const> scopes);

    /// Makes \p scope the current one. After a scope has been left for one outside it, it is not
    /// entered again.
    void enter(ScopeIndex scope);

    /// Adds a wildcard to the current scope. It hides those with the same text in enclosing scopes.
    void add(std::string_view text, EntryReference reference);

    /// Records a use in the current scope.
    ///
    /// \returns the number of visible wildcards, each of which the use reaches.
    std::size_t reach();

    /// Leaves all scopes.
    ///
    /// \returns the wildcards that some use has reached.
    std::span<EntryReference const> finish();

  private:
    struct Holder {
        EntryReference entry;
        /// When it became the innermost wildcard with its text.
        std::size_t visibleSince = 0;
    };

    /// The wildcards with the same text in the open scopes, innermost last; never empty.
    using Holders = std::map<std::string, std::vector<Holder>, std::less<>>;

    struct Added {
        ScopeIndex scope = 0;
        Holders::iterator position;
    };

    void removeLast();
    /// Lists \p holder, which is innermost and will not be from now on, if a use has reached it.
    void settle(Holder const& holder);

    /// The last scope within each scope.
    std::vector<ScopeIndex> lastWithin;
    ScopeIndex current = 0;
    Holders holders;
    std::vector<Added> additions;
    std::size_t time = 0;
    std::size_t lastUse = 0;
    std::vector<EntryReference> reached;
};

} // namespace explorer
