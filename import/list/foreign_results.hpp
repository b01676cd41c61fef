// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The results of walks from foreign lists during one lookup.

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

/// Stores the results of lookups that foreign lists make while an outer lookup calls them.
///
/// A foreign list may pass a question on to an ImportList, which walks outward itself. If it finds
/// nothing, the outer lookup walks on to the same lists and asks them again: without stored
/// results, the number of questions would double with each such list. The walk of the outermost
/// lookup is never repeated, so only the lookups inside it store results.
class ForeignResults {
  public:
    /// The results of the outermost lookup of this thread; null if none is calling a foreign list.
    static ForeignResults* ofOuterLookup() noexcept { return current; }

    /// Created by the outermost lookup.
    ForeignResults() noexcept { current = this; }

    ForeignResults(ForeignResults const&) = delete;
    ForeignResults& operator=(ForeignResults const&) = delete;

    ~ForeignResults() { current = nullptr; }

    /// What a walk found, or the exception of a foreign list that ended it.
    template <typename Found>
    struct Result {
        std::optional<Found> found;
        std::exception_ptr failure = nullptr;
    };

    /// The result of an earlier walk from \p list outward; null if there was none.
    template <typename Found>
    Result<Found> const* find(IImportList const& list, std::u16string_view name) const {
        auto const& results = std::get<Results<Found>>(resultsByKind);
        auto const result = results.find({&list, name});
        return result == results.end() ? nullptr : &result->second;
    }

    /// Stores the result of a walk that passed \p lists.
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
    std::set<std::u16string, std::less<>> names;            // the keys of the results
    std::vector<std::shared_ptr<IImportList const>> shares; // keep addresses from being reused
};

} // namespace lf::import
