// SPDX-License-Identifier: BSL-1.0

// Runs lookups and parses of the workload, and has callgrind write down the instructions of each
// under its name. Outside valgrind it does the same to no effect.

#include "workload.hpp"

#include <import/argument_parser.hpp>

#include <valgrind/callgrind.h>

#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

using lf::import::Behavior;
using workload::Keys;
using workload::LookupWorkload;

constexpr std::size_t importsPerScope = 8;

// Counts \p work, which must return true; once before that, so that what happens once is over.
template <typename Work>
void count(std::string const& name, Work work) {
    bool isRight = work();
    CALLGRIND_TOGGLE_COLLECT;
    isRight = work() && isRight;
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    if (!isRight) {
        std::cerr << "wrong result: " << name << '\n';
        std::exit(EXIT_FAILURE);
    }
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

} // namespace

int main() {
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
