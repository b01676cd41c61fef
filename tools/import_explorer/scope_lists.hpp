// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The import lists of a script's scopes, with the way back from their entries to the source.

#include <import_explorer/analysis.hpp>
#include <import_explorer/script_reader.hpp>

#include <import/import_list.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
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

/// A name that a scope sees.
struct VisibleName {
    /// Lives until the list that holds it is added to.
    std::u16string_view name;
    EntryReference entry;
};

/// A list for each scope, chained to the one of its parent. The lists decide; what stands beside
/// them only tells where an entry that they name comes from.
class ScopeLists {
  public:
    explicit ScopeLists(std::vector<Scope> const& scopes);

    /// Adds \p entry, which is known as \p reference from then on.
    Addition add(ScopeIndex scope, lf::import::ImportEntry&& entry, bool isDynamic,
                 EntryReference reference);

    /// The package and the fully qualified name that introduce \p name, as far as there are, the
    /// nearest first.
    std::vector<EntryReference> find(ScopeIndex scope, std::u16string_view name) const;

    /// The wildcards that \p scope sees, outward.
    std::vector<EntryReference> visibleWildcards(ScopeIndex scope) const;

    /// The names that \p scope sees, packages first, at most \p limit of them.
    std::vector<VisibleName> visibleNames(ScopeIndex scope, std::size_t limit) const;

    ScopeView view(ScopeIndex scope) const;

  private:
    using References = std::unordered_map<std::u16string, EntryReference>;

    /// No scope has two packages of a name, or two dotted imports of the same text.
    struct ScopeRecord {
        std::optional<ScopeIndex> parent;
        std::shared_ptr<lf::import::IImportList> list;
        References packagesByName;
        References dottedByText;
        /// The first with each root element.
        References dottedByRoot;
    };

    class OutwardSearch;

    static void remember(ScopeRecord& record, lf::import::ImportEntry const& entry,
                         EntryReference reference);
    std::optional<EntryReference> findConflict(ScopeIndex scope,
                                               lf::import::ImportEntry const& entry) const;
    static std::optional<EntryReference> findOwn(ScopeRecord const& record,
                                                 std::u16string_view name);
    std::optional<EntryReference> findPackage(ScopeIndex scope, std::u16string_view name) const;
    template <typename Entry>
    void compareViews(ScopeIndex scope, ScopeView& view) const;

    std::vector<ScopeRecord> records;
};

} // namespace explorer
