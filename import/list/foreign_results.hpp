// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What walks from foreign lists find within one lookup.

#include <import/import_list.hpp>

#include <exception>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace lf::import {

/// The results of the lookups that foreign lists make of other lists while one lookup asks them.
///
/// A foreign list may pass a question on to an ImportList, which walks outward in turn. When it has
/// found nothing, the walk of the lookup that asked goes the same way, and asks again: questions
/// would double with each such list. Nobody goes the way of the outermost lookup again, so that
/// needs nothing but what the lookups inside it keep.
class ForeignResults {
  public:
    /// Those of the outermost lookup of this thread, if one is asking a foreign list.
    static ForeignResults* ofOuterLookup() noexcept { return current; }

    /// For the outermost lookup; ends with it.
    ForeignResults() noexcept { current = this; }

    ForeignResults(ForeignResults const&) = delete;
    ForeignResults& operator=(ForeignResults const&) = delete;

    ~ForeignResults() { current = nullptr; }

    /// How a walk ended: with what it found, or with an exception of a foreign list.
    template <typename Found>
    struct Result {
        std::optional<Found> found;
        std::exception_ptr failure = nullptr;
    };

    /// The result of a walk from \p list outward, if one was made; null if not.
    template <typename Found>
    Result<Found> const* find(IImportList const& list, std::u16string_view name) const {
        auto const& results = std::get<Results<Found>>(resultsByKind);
        auto const result = results.find({&list, name});
        return result == results.end() ? nullptr : &result->second;
    }

    /// Keeps the result of a walk that passed \p lists.
    template <typename Found>
    void keep(std::vector<std::shared_ptr<IImportList const>>&& lists, std::u16string_view name,
              Result<Found> const& result) {
        std::u16string_view const kept = *names.emplace(name).first;
        for (std::shared_ptr<IImportList const>& list : lists) {
            shares.push_back(std::move(list));
            std::get<Results<Found>>(resultsByKind)
                .try_emplace({shares.back().get(), kept}, result);
        }
    }

  private:
    template <typename Found>
    using Results = std::map<std::pair<IImportList const*, std::u16string_view>, Result<Found>>;

    static inline thread_local ForeignResults* current = nullptr;

    std::tuple<Results<FoundImportEntry>, Results<FoundFullyQualifiedName>> resultsByKind;
    std::set<std::u16string, std::less<>> names;            // what the results are found by
    std::vector<std::shared_ptr<IImportList const>> shares; // so that no address is used again
};

} // namespace lf::import
