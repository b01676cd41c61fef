// SPDX-License-Identifier: BSL-1.0

// Runs lookups and parses of the workload, or with the argument `growth` fills lists of growing
// size, and has callgrind write down the instructions of each under its name. Outside valgrind it
// does the same to no effect.

#include "workload.hpp"

#include <support/make_entries.hpp>

#include <import/argument_parser.hpp>
#include <import/import_list.hpp>

#include <valgrind/callgrind.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using lf::import::Behavior;
using workload::Keys;
using workload::LookupWorkload;

constexpr std::size_t importsPerScope = 8;

void require(bool isRight, std::string const& name) {
    if (!isRight) {
        std::cerr << "wrong result: " << name << '\n';
        std::exit(EXIT_FAILURE);
    }
}

// Counts \p work, which must return true.
template <typename Work>
void countOnce(std::string const& name, Work work) {
    CALLGRIND_TOGGLE_COLLECT;
    bool const isRight = work();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    require(isRight, name);
}

// The same after it was done before, so that what happens but once is over.
template <typename Work>
void count(std::string const& name, Work work) {
    require(work(), name);
    countOnce(name, work);
}

void countLookups(std::size_t depth) {
    LookupWorkload const workload = workload::makeLookupWorkload(depth, importsPerScope);
    workload::ImportLists const lists(workload.scopes);
    auto const findAll = [&lists](Keys const& keys) {
        std::size_t found = 0;
        for (std::u16string const& name : keys.names) {
            found += lists.findPackage(name) ? 1 : 0;
        }
        return found;
    };
    std::string const at = "/depth:" + std::to_string(depth);
    count("find_package_miss" + at, [&] { return findAll(workload.misses) == 0; });
    count("find_package_hit" + at,
          [&] { return findAll(workload.packageHits) == workload.packageHits.names.size(); });
}

void countParsing(std::string const& name, std::vector<std::u16string> const& texts,
                  Behavior behavior) {
    count(name, [&] {
        auto const parser = lf::import::createImportArgumentParser(texts, behavior);
        return parser->parse().size() == texts.size();
    });
}

void countRegressions() {
    countLookups(1);
    countLookups(16);

    workload::Draws draws;
    workload::NameSource names(draws);
    workload::Imports const imports =
        workload::makeScopes(names, draws, 1, 1'000, workload::Repetition::None).front();
    countParsing("parse_packages", imports.packages, Behavior::WithPackageImports);
    countParsing("parse_names", imports.fullyQualified, Behavior::WithPackageImports);
    countParsing("parse_legacy_names", imports.fullyQualified, Behavior::WithoutPackageImports);
}

// All names share their root element.
void countGrowth(std::vector<std::u16string> const& names, std::size_t size) {
    std::vector<lf::import::ImportEntry> entries;
    for (std::size_t i = 0; i < size; ++i) {
        entries.emplace_back(support::makeName(u"root." + names[i]));
    }
    auto const list = lf::import::createImportList(nullptr);
    std::string const at = "/entries:" + std::to_string(size);
    countOnce("add_names" + at, [&] {
        bool isRight = true;
        for (lf::import::ImportEntry& entry : entries) {
            isRight = !list->addStaticImportEntry(std::move(entry)) && isRight;
        }
        return isRight;
    });
    countOnce("find_names" + at, [&] {
        return std::all_of(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(size),
                           [&](std::u16string const& name) {
                               return list->findFullyQualifiedImportEntry(name, {}).has_value();
                           });
    });
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 1) {
        countRegressions();
    } else if (std::string_view(argv[1]) == "growth") {
        workload::Draws draws;
        std::vector<std::u16string> const names = workload::NameSource(draws).take(1'000'000);
        for (std::size_t size = 1'000; size <= names.size(); size *= 10) {
            countGrowth(names, size);
        }
    }
}
