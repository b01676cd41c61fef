// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What the benchmarks work on: scopes with their imports, import lists, names to look up in them.

#include "names.hpp"

#include <import/entries.hpp>
#include <import/import_list.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace workload {

/// The imports of one scope, as the texts of import arguments.
struct Imports {
    std::vector<std::u16string> packages;
    std::vector<std::u16string> fullyQualified;
};

/// Nested scopes, outermost first.
using Scopes = std::vector<Imports>;

/// Whether scopes import some things that an enclosing scope imports already.
enum class Repetition : std::uint8_t {
    /// Every import of every scope is another.
    None,
    /// One import in eight repeats one of an enclosing scope.
    Natural,
};

/// \p depth scopes of \p importsPerScope imports each, one half packages and the other fully
/// qualified names. No import of theirs is refused.
Scopes makeScopes(NameSource& names, Draws& draws, std::size_t depth, std::size_t importsPerScope,
                  Repetition repetition);

/// How many names are looked up in turn.
inline constexpr std::size_t numberOfKeys = 1'024;

/// What a name must resolve to.
struct Answer {
    /// The package, or the raw argument of the fully qualified name.
    std::u16string import;
    lf::import::EntryOrigin origin{};

    friend bool operator==(Answer const&, Answer const&) = default;
};

/// Names to look up, drawn at random, each with its answer.
struct Keys {
    std::vector<std::u16string> names;
    std::vector<std::optional<Answer>> answers;
};

/// Scopes, and what to ask them.
struct LookupWorkload {
    Scopes scopes;
    Keys misses;
    /// Spread evenly over the scopes; empty when nothing of the kind is imported.
    Keys packageHits;
    Keys fullyQualifiedHits;
};

LookupWorkload makeLookupWorkload(std::size_t depth, std::size_t importsPerScope,
                                  NameShape shape = NameShape::RandomWords);

/// The text behind the last dot.
std::u16string introducedName(std::u16string const& rawArgument);

/// The same imports in the library's import lists, one per scope.
class ImportLists {
  public:
    /// \throws std::logic_error when an import is refused.
    explicit ImportLists(Scopes const& scopes);

    lf::import::IImportList const& innermost() const noexcept { return *list; }

    std::optional<lf::import::FoundImportEntry> findPackage(std::u16string_view name) const {
        return list->findPackageImportEntry(name, lf::import::IImportList::CheckAncestorList::Yes);
    }

    std::optional<lf::import::FoundFullyQualifiedName>
    findFullyQualified(std::u16string_view name) const {
        return list->findFullyQualifiedImportEntry(name,
                                                   lf::import::IImportList::CheckAncestorList::Yes);
    }

  private:
    std::shared_ptr<lf::import::IImportList const> list;
};

} // namespace workload
