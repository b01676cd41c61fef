// SPDX-License-Identifier: BSL-1.0

// The cost of enumerating the entries that are visible from the innermost of nested scopes, per
// entry.

#include "floors/plain_scopes.hpp"
#include "measurement.hpp"
#include "model_lists.hpp"
#include "subjects.hpp"
#include "workload.hpp"

#include <model/list_model.hpp>
#include <support/observed_entries.hpp>

#include <import/import_list.hpp>

#include <range/v3/view/any_view.hpp>
#include <range/v3/view/ref.hpp>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace benchmarks {

namespace {

using lf::import::FullyQualifiedImportEntry;
using lf::import::IImportList;
using lf::import::PackageImportEntry;
using model::Outcome;

constexpr std::size_t importsPerScope = 8;

workload::Scopes makeScopes(std::size_t depth) {
    workload::Draws draws;
    workload::NameSource names(draws);
    return workload::makeScopes(names, draws, depth, importsPerScope,
                                workload::Repetition::Natural);
}

// The differences between the kinds of entry.
template <typename Entry>
struct KindOf;

template <>
struct KindOf<PackageImportEntry> {
    static constexpr std::string_view name = "packages";
    static constexpr auto outcome = model::OutcomeKind::Package;
    static constexpr auto getter = &IImportList::getPackageImportEntries;
};

template <>
struct KindOf<FullyQualifiedImportEntry> {
    static constexpr std::string_view name = "fully_qualified";
    static constexpr auto outcome = model::OutcomeKind::FullyQualified;
    static constexpr auto getter = &IImportList::getFullyQualifiedImportEntries;
};

// Contestants call a function for each visible entry.

template <typename Entry>
class ByGleigem {
  public:
    explicit ByGleigem(workload::Scopes const& scopes) : lists(scopes) {}

    template <typename Visit>
    void forEach(Visit visit) const {
        for (Entry const& entry : std::invoke(KindOf<Entry>::getter, lists.innermost(),
                                              IImportList::CheckAncestorList::Yes)) {
            visit(entry);
        }
    }

  private:
    workload::ImportLists lists;
};

template <typename Entry>
class ByLoop {
  public:
    explicit ByLoop(workload::Scopes const& itsScopes) : scopes(itsScopes) {}

    template <typename Visit>
    void forEach(Visit visit) const {
        scopes.forEachVisible<Entry>(visit);
    }

  private:
    floors::PlainScopes scopes;
};

template <typename Entry>
class ByNestedViews {
  public:
    explicit ByNestedViews(workload::Scopes const& itsScopes) : scopes(itsScopes) {}

    template <typename Visit>
    void forEach(Visit visit) const {
        for (Entry const& entry : scopes.nestedViews<Entry>()) {
            visit(entry);
        }
    }

  private:
    floors::PlainScopes scopes;
};

template <typename Entry>
class ByModel {
  public:
    explicit ByModel(workload::Scopes const& scopes) : list(workload::makeModelLists(scopes)) {}

    template <typename Visit>
    void forEach(Visit visit) const {
        for (Outcome const* const entry :
             list->entries(KindOf<Entry>::outcome, model::withAncestors)) {
            visit(*entry);
        }
    }

  private:
    std::shared_ptr<model::List const> list;
};

// As many entries as are visible, in one vector: the cost of `any_view` alone.
template <typename Entry>
class ByAnyViewAlone {
  public:
    explicit ByAnyViewAlone(workload::Scopes const& scopes) {
        ByLoop<Entry>(scopes).forEach([this](Entry const& entry) { entries.push_back(entry); });
    }

    template <typename Visit>
    void forEach(Visit visit) const {
        ranges::any_view<Entry const&, ranges::category::forward> view = ranges::ref_view(entries);
        for (Entry const& entry : view) {
            visit(entry);
        }
    }

  private:
    std::vector<Entry> entries;
};

Outcome const& describe(Outcome const& entry) {
    return entry;
}

using support::describe;

template <typename Contestant>
std::vector<Outcome> collect(Contestant const& contestant) {
    std::vector<Outcome> outcomes;
    contestant.forEach([&](auto const& entry) { outcomes.push_back(describe(entry)); });
    return outcomes;
}

// The result of the model up to its depth limit; beyond it, that of the loop, which agrees with the
// model there.
template <typename Entry>
std::vector<Outcome> expectedEntries(workload::Scopes const& scopes) {
    return scopes.size() <= workload::deepestForModel ? collect(ByModel<Entry>(scopes))
                                                      : collect(ByLoop<Entry>(scopes));
}

std::size_t touch(Outcome const& entry) {
    return entry.introducedName.size();
}

template <typename Entry>
std::size_t touch(Entry const& entry) {
    return entry.getIntroducedName().size();
}

template <typename Entry, typename Contestant>
void measure(benchmark::State& state, std::size_t depth) {
    workload::Scopes const scopes = makeScopes(depth);
    Contestant const contestant(scopes);
    std::vector<Outcome> const visible = collect(contestant);
    require(visible == expectedEntries<Entry>(scopes), "an enumeration");

    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        std::size_t sum = 0;
        contestant.forEach([&sum](auto const& entry) { sum += touch(entry); });
        benchmark::DoNotOptimize(sum);
    }
    measurement.report(visible.size());
}

template <typename Entry>
void registerKind(std::size_t depth) {
    auto const addContestant = [depth](std::string_view contestant, auto measureContestant) {
        std::string const name = "enumerate_" + std::string(KindOf<Entry>::name) + '/' +
                                 std::string(contestant) + "/depth:" + std::to_string(depth) +
                                 "/imports:" + std::to_string(importsPerScope);
        add(name, [=](benchmark::State& state) { measureContestant(state, depth); });
    };
    addContestant("gleigem", measure<Entry, ByGleigem<Entry>>);
    addContestant("loop", measure<Entry, ByLoop<Entry>>);
    addContestant("nested_views", measure<Entry, ByNestedViews<Entry>>);
    addContestant("any_view_alone", measure<Entry, ByAnyViewAlone<Entry>>);
    if (depth <= workload::deepestForModel) {
        addContestant("model", measure<Entry, ByModel<Entry>>);
    }
}

} // namespace

void registerEnumeration() {
    for (std::size_t const depth : {1, 4, 16, 64}) {
        registerKind<PackageImportEntry>(depth);
        registerKind<FullyQualifiedImportEntry>(depth);
    }
}

} // namespace benchmarks
