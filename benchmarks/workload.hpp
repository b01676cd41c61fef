// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The data of the benchmarks: scopes with their imports, import lists, and names to look up.

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

/// Whether scopes repeat imports of enclosing scopes.
enum class Repetition : std::uint8_t {
    /// All imports of all scopes are different.
    None,
    /// One import in eight repeats one of an enclosing scope.
    Natural,
};

/// \p depth scopes with \p importsPerScope imports each, half of them packages and half fully
/// qualified names. No import is refused.
Scopes makeScopes(NameSource& names, Draws& draws, std::size_t depth, std::size_t importsPerScope,
                  Repetition repetition);

/// The number of different names to look up.
inline constexpr std::size_t numberOfKeys = 1'024;

/// The expected result of a lookup.
struct Answer {
    /// The package, or the raw argument of the fully qualified name.
    std::u16string import;
    lf::import::EntryOrigin origin{};

    friend bool operator==(Answer const&, Answer const&) = default;
};

/// Names to look up, in random order, with their answers.
struct Keys {
    std::vector<std::u16string> names;
    std::vector<std::optional<Answer>> answers;
};

/// Scopes, and the names to look up in them.
struct LookupWorkload {
    Scopes scopes;
    Keys misses;
    /// Spread evenly over the scopes; empty if nothing of the kind is imported.
    Keys packageHits;
    Keys fullyQualifiedHits;
};

LookupWorkload makeLookupWorkload(std::size_t depth, std::size_t importsPerScope,
                                  NameShape shape = NameShape::RandomWords);

/// The text after the last dot.
std::u16string introducedName(std::u16string const& rawArgument);

/// The same imports in the library's import lists, one per scope.
class ImportLists {
  public:
    /// \throws std::logic_error if an import is refused.
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
