// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The way back from the entries that lists find to their places in the source.

#include <import_explorer/analysis.hpp>
#include <import_explorer/script_reader.hpp>

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace explorer {

/// An entry with the scope whose list holds it.
struct Origin {
    ScopeIndex scope = 0;
    EntryReference entry;
};

/// Knows the entries of the current scope and of those around it, which are the ones that a list
/// can find there. A scope that is left is forgotten, so that each question takes the same time
/// however many scopes there are and however deep they lie.
class OpenScopes {
  public:
    /// \param scopes in their order in a file.
    explicit OpenScopes(std::span<AnalysedScope const> scopes);

    /// Makes \p scope the current one. Scopes are entered in their order; a scope that is left for
    /// another than one within it is not entered again.
    void enter(ScopeIndex scope);

    /// Leaves all scopes.
    void leaveAll();

    /// Adds \p entry to the current scope, whose list has it.
    void add(AnalysedEntry const& entry, EntryReference reference);

    /// The innermost package that introduces \p name.
    std::optional<Origin> findPackage(std::string_view name) const;

    /// The innermost name, and of a scope the first, that introduces \p name.
    std::optional<Origin> findName(std::string_view name) const;

    /// The innermost dotted import with \p text.
    std::optional<Origin> findDotted(std::string_view text) const;

    /// The innermost dotted import, and of a scope the first, that begins with \p root.
    std::optional<Origin> findRoot(std::string_view root) const;

    /// \p origin if it is of the current scope.
    std::optional<EntryReference> own(std::optional<Origin> const& origin) const;

    /// The packages and names of all open scopes, outermost first.
    std::span<EntryReference const> named() const noexcept { return introducers; }

    /// The wildcards that the current scope sees, outward, which may all supply a name.
    Capped<EntryReference> reachWildcards();

    /// The wildcards of the scopes that were left which were reached.
    std::span<EntryReference const> reachedWildcards() const noexcept { return reached; }

  private:
    /// One of the entries with the same key, innermost last.
    struct Holder {
        Origin origin;
        /// Since when a wildcard has been the innermost one.
        std::size_t visibleSince = 0;
    };

    struct Hash {
        using is_transparent = void;

        std::size_t operator()(std::string_view key) const noexcept {
            return std::hash<std::string_view>()(key);
        }
    };

    using Holders = std::unordered_map<std::string, std::vector<Holder>, Hash, std::equal_to<>>;

    struct Added {
        Holders* holders = nullptr;
        Holders::value_type* place = nullptr;
        EntryKind kind = EntryKind::Name;
    };

    /// A scope that something was added to.
    struct OpenScope {
        ScopeIndex scope = 0;
        std::size_t firstAdded = 0;
        std::size_t firstIntroducer = 0;
        std::size_t firstWildcard = 0;
    };

    static std::optional<Origin> innermost(Holders const& holders, std::string_view key);
    Holders::value_type& push(Holders& holders, std::string_view key, EntryKind kind,
                              EntryReference reference);
    void pushFirst(Holders& holders, std::string_view key, EntryReference reference);
    void pop();
    void leave();
    void settle(Holder& wildcard);

    std::vector<ScopeIndex> lastWithin;
    ScopeIndex current = 0;
    std::vector<OpenScope> open;
    std::vector<Added> additions;
    std::vector<EntryReference> introducers;

    /// A wildcard with the place where the innermost one of its text is.
    struct Wildcard {
        EntryReference entry;
        Holders::value_type const* place = nullptr;
    };

    std::vector<Wildcard> wildcards;
    Holders packagesByName;
    Holders dottedByText;
    /// Of each scope the first that introduces a name, and the first with a root.
    Holders namesByName;
    Holders dottedByRoot;
    std::size_t visibleWildcards = 0;
    std::size_t time = 0;
    std::size_t lastReach = 0;
    std::vector<EntryReference> reached;
};

} // namespace explorer
