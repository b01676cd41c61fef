// SPDX-License-Identifier: BSL-1.0

// The cost of looking up a name from the innermost of nested scopes, with and without a result.

#include "floors/scope_maps.hpp"
#include "measurement.hpp"
#include "model_lists.hpp"
#include "subjects.hpp"
#include "workload.hpp"

#include <model/list_model.hpp>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace benchmarks {

namespace {

using lf::import::EntryOrigin;
using workload::Answer;
using workload::Keys;
using workload::LookupWorkload;

// The reference model with the interface of the other contestants.
class ModelLists {
  public:
    explicit ModelLists(workload::Scopes const& scopes) : list(workload::makeModelLists(scopes)) {}

    std::optional<model::Found> findPackage(std::u16string const& name) const {
        return list->findPackage(name, model::withAncestors);
    }

    std::optional<model::Found> findFullyQualified(std::u16string const& name) const {
        return list->findFullyQualified(name, model::withAncestors);
    }

  private:
    std::shared_ptr<model::List const> list;
};

Answer asAnswer(lf::import::FoundImportEntry const& found) {
    return {std::u16string(found.entry.getIntroducedName()), found.origin};
}

Answer asAnswer(lf::import::FoundFullyQualifiedName const& found) {
    return {std::u16string(found.rawArgument), found.origin};
}

Answer asAnswer(model::Found const& found) {
    return {found.entry->kind == model::OutcomeKind::Package ? found.entry->introducedName
                                                             : found.entry->rawArgument,
            static_cast<EntryOrigin>(found.origin)};
}

template <typename Contestant, auto find>
void check(Contestant const& contestant, Keys const& keys) {
    for (std::size_t i = 0; i < keys.names.size(); ++i) {
        auto const found = std::invoke(find, contestant, keys.names[i]);
        std::optional<Answer> const& expected = keys.answers[i];
        require(found.has_value() == expected.has_value() &&
                    (!found || asAnswer(*found) == *expected),
                "a lookup");
    }
}

struct Chain {
    std::size_t depth;
    std::size_t importsPerScope;
    workload::NameShape names = workload::NameShape::RandomWords;

    friend bool operator<(Chain const& left, Chain const& right) {
        return std::tie(left.depth, left.importsPerScope, left.names) <
               std::tie(right.depth, right.importsPerScope, right.names);
    }
};

LookupWorkload const& workloadOf(Chain chain) {
    static std::mutex mutex;
    static std::map<Chain, LookupWorkload> workloads;
    std::lock_guard const lock(mutex);
    auto const known = workloads.find(chain);
    return known != workloads.end()
               ? known->second
               : workloads
                     .emplace(chain, workload::makeLookupWorkload(
                                         chain.depth, chain.importsPerScope, chain.names))
                     .first->second;
}

// Created and checked once per chain.
template <typename Contestant>
Contestant const& contestantOf(Chain chain) {
    static std::mutex mutex;
    static std::map<Chain, Contestant> contestants;
    std::lock_guard const lock(mutex);
    if (auto const known = contestants.find(chain); known != contestants.end()) {
        return known->second;
    }
    LookupWorkload const& workload = workloadOf(chain);
    Contestant const& contestant = contestants.emplace(chain, workload.scopes).first->second;
    check<Contestant, &Contestant::findPackage>(contestant, workload.misses);
    check<Contestant, &Contestant::findPackage>(contestant, workload.packageHits);
    check<Contestant, &Contestant::findFullyQualified>(contestant, workload.misses);
    check<Contestant, &Contestant::findFullyQualified>(contestant, workload.fullyQualifiedHits);
    return contestant;
}

// Looks up all names in each iteration, so that a single iteration is a valid measurement: the
// suite runs only one if the processor is busy. Threads start at different names.
template <typename Contestant, auto find>
void measure(benchmark::State& state, Chain chain, Keys LookupWorkload::*keys) {
    auto const& contestant = contestantOf<Contestant>(chain);
    std::vector<std::u16string> names = (workloadOf(chain).*keys).names;
    auto const start = static_cast<std::ptrdiff_t>(names.size()) * state.thread_index();
    std::ranges::rotate(names, names.begin() + start / state.threads());
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        for (std::u16string const& name : names) {
            auto const found = std::invoke(find, contestant, name);
            benchmark::DoNotOptimize(found);
        }
    }
    measurement.report(names.size());
}

void measureHash(benchmark::State& state) {
    std::vector<std::u16string> const& names = workloadOf({1, 8}).misses.names;
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        for (std::u16string const& name : names) {
            std::size_t const hash = std::hash<std::u16string_view>{}(name);
            benchmark::DoNotOptimize(hash);
        }
    }
    measurement.report(names.size());
}

std::string nameOf(std::string_view subject, std::string_view contestant, Chain chain) {
    return std::string(subject) + '/' + std::string(contestant) +
           "/depth:" + std::to_string(chain.depth) +
           "/imports:" + std::to_string(chain.importsPerScope) +
           "/names:" + std::string(toString(chain.names));
}

template <typename Contestant>
void registerContestant(std::string_view name, Chain chain) {
    auto const addLookup = [&](std::string_view subject, auto measureLookup,
                               Keys LookupWorkload::*keys) {
        add(nameOf(subject, name, chain),
            [=](benchmark::State& state) { measureLookup(state, chain, keys); });
    };
    auto* const findPackage = measure<Contestant, &Contestant::findPackage>;
    auto* const findFullyQualified = measure<Contestant, &Contestant::findFullyQualified>;
    addLookup("find_package_miss", findPackage, &LookupWorkload::misses);
    addLookup("find_fully_qualified_miss", findFullyQualified, &LookupWorkload::misses);
    if (chain.importsPerScope > 0) {
        addLookup("find_package_hit", findPackage, &LookupWorkload::packageHits);
        addLookup("find_fully_qualified_hit", findFullyQualified,
                  &LookupWorkload::fullyQualifiedHits);
    }
}

void registerBesideAbsl(Chain chain) {
    registerContestant<workload::ImportLists>("gleigem", chain);
    registerContestant<floors::ScopeMaps<floors::AbslMap>>("absl_maps", chain);
}

// Readers that write shared data would slow each other down.
void registerThreads(Chain chain) {
    for (int const threads : {1, 2}) {
        for (auto const& [subject, keys] :
             {std::pair("find_package_miss_by_threads", &LookupWorkload::misses),
              std::pair("find_package_hit_by_threads", &LookupWorkload::packageHits)}) {
            add(nameOf(subject, "gleigem", chain), [chain, keys = keys](benchmark::State& state) {
                measure<workload::ImportLists, &workload::ImportLists::findPackage>(state, chain,
                                                                                    keys);
            })->Threads(threads);
        }
    }
}

} // namespace

void registerLookup() {
    add("hash_of_name/std", measureHash);
    for (workload::NameShape const names : workload::nameShapes) {
        for (std::size_t const depth : {1, 4, 16, 64}) {
            for (std::size_t const imports : {8, 32, 128, 1'024}) {
                registerBesideAbsl({depth, imports, names});
            }
        }
    }
    for (std::size_t const depth : {1, 4, 16, 64}) {
        registerBesideAbsl({depth, 0});
        registerContestant<floors::ScopeMaps<floors::UnorderedMap>>("unordered_maps", {depth, 8});
        if (depth <= workload::deepestForModel) {
            registerContestant<ModelLists>("model", {depth, 8});
        }
    }
    for (std::size_t const imports : {10'000, 100'000, 1'000'000}) {
        registerBesideAbsl({1, imports});
    }
    registerThreads({1, 8});
    registerThreads({16, 8});
}

} // namespace benchmarks
