// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What the benchmarks work on: names, scopes with their imports, import lists. All of it is drawn
/// at random, yet the same in every run.

#include <import/entries.hpp>
#include <import/import_list.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace workload {

/// Whole numbers from a fixed seed.
class Draws {
  public:
    /// A number less than \p bound.
    std::size_t below(std::size_t bound) { return engine() % bound; }

    /// One element of \p range.
    template <typename Range>
    auto const& oneOf(Range const& range) {
        return range[below(std::size(range))];
    }

  private:
    std::mt19937_64 engine{20240229};
};

/// Names as programs have them: one to four words in camel case, of which none is reserved.
class NameSource {
  public:
    explicit NameSource(Draws& itsDraws) : draws(itsDraws) {}

    /// A name that was not given before.
    std::u16string next();

    std::vector<std::u16string> take(std::size_t count);

  private:
    Draws& draws;
    std::unordered_set<std::u16string> given;
};

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

LookupWorkload makeLookupWorkload(std::size_t depth, std::size_t importsPerScope);

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
