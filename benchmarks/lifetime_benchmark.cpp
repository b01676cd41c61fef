// SPDX-License-Identifier: BSL-1.0

// The cost of copying and destroying lists, per entry.

#include "floors/described_containers.hpp"
#include "measurement.hpp"
#include "subjects.hpp"
#include "workload.hpp"

#include <support/make_entries.hpp>

#include <import/import_list.hpp>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace benchmarks {

namespace {

using CheckAncestorList = lf::import::IImportList::CheckAncestorList;

// One list with equally many packages and fully qualified names.
workload::Scopes makeScope(std::size_t numberOfEntries) {
    workload::Draws draws;
    workload::NameSource names(draws);
    return workload::makeScopes(names, draws, 1, numberOfEntries, workload::Repetition::None);
}

struct Gleigem {
    static constexpr std::string_view name = "gleigem";
    using List = std::unique_ptr<lf::import::IImportList>;

    static List make(workload::Scopes const& scopes) {
        return workload::ImportLists(scopes).innermost().clone();
    }

    static List clone(List const& list) { return list->clone(); }

    static std::size_t size(List const& list) {
        return list->getNumberOfEntries(CheckAncestorList::No);
    }
};

struct ByHand {
    static constexpr std::string_view name = "by_hand";
    using List = std::unique_ptr<floors::DescribedContainers>;

    static List make(workload::Scopes const& scopes) {
        auto list = std::make_unique<floors::DescribedContainers>();
        for (std::u16string const& package : scopes.back().packages) {
            list->add(support::makePackage(package));
        }
        for (std::u16string const& name : scopes.back().fullyQualified) {
            list->add(support::makeName(name));
        }
        return list;
    }

    static List clone(List const& list) {
        return std::make_unique<floors::DescribedContainers>(*list);
    }

    static std::size_t size(List const& list) { return list->size(); }
};

constexpr std::size_t leastEntries = 2'048; // that are copied or destroyed in one go

enum class Timed { Clone, Destruction };

template <typename Contestant>
void measure(benchmark::State& state, Timed timed, std::size_t numberOfEntries) {
    auto const original = Contestant::make(makeScope(numberOfEntries));
    require(Contestant::size(Contestant::clone(original)) == numberOfEntries, "a copy of a list");
    std::vector<typename Contestant::List> copies(
        std::max<std::size_t>(1, leastEntries / numberOfEntries));
    auto const makeCopies = [&] {
        std::ranges::generate(copies, [&] { return Contestant::clone(original); });
    };
    auto const destroyCopies = [&] {
        std::ranges::generate(copies, [] { return typename Contestant::List(); });
    };
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        if (timed == Timed::Clone) {
            makeCopies();
            measurement.pause();
            destroyCopies();
            measurement.resume();
        } else {
            measurement.pause();
            makeCopies();
            measurement.resume();
            destroyCopies();
        }
    }
    measurement.report(copies.size() * numberOfEntries);
}

// Destroying the innermost list destroys the whole chain. Per list.
void measureChainDestruction(benchmark::State& state, std::size_t depth) {
    workload::Draws draws;
    workload::NameSource names(draws);
    workload::Scopes const scopes =
        workload::makeScopes(names, draws, depth, 8, workload::Repetition::None);
    constexpr std::size_t leastLists = 256; // that are destroyed in one go
    std::vector<workload::ImportLists> chains;
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        measurement.pause();
        while (chains.size() * depth < leastLists) {
            chains.emplace_back(scopes);
        }
        measurement.resume();
        chains.clear();
    }
    measurement.report(std::max(depth, leastLists));
}

template <typename Contestant>
void registerContestant() {
    for (std::size_t const count : {15, 1'000, 100'000}) {
        for (auto const& [subject, timed] :
             {std::pair("clone", Timed::Clone), std::pair("destroy", Timed::Destruction)}) {
            std::string const name = std::string(subject) + '/' + std::string(Contestant::name) +
                                     "/entries:" + std::to_string(count);
            add(name, [timed = timed, count](benchmark::State& state) {
                measure<Contestant>(state, timed, count);
            });
        }
    }
}

} // namespace

void registerLifetime() {
    registerContestant<Gleigem>();
    registerContestant<ByHand>();
    for (std::size_t const depth : {1, 4, 16, 64}) {
        add("destroy_chain/gleigem/depth:" + std::to_string(depth),
            [depth](benchmark::State& state) { measureChainDestruction(state, depth); });
    }
}

} // namespace benchmarks
