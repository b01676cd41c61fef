// SPDX-License-Identifier: BSL-1.0

// Makes callgrind count the instructions of several operations by name: lookups and parses; with
// the argument `growth`, lists of growing size; with `flood`, lists whose names collide under the
// standard hash. Without valgrind, it runs them without counting.

#include "flood.hpp"
#include "workload.hpp"

#include <support/make_entries.hpp>

#include <import/argument_parser.hpp>
#include <import/import_list.hpp>

#include <range/v3/range/primitives.hpp>

#include <valgrind/callgrind.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
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

// The same after one uncounted run, so that one-time work is excluded.
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

// The number of visible entries.
std::size_t enumerate(lf::import::IImportList const& list) {
    using enum lf::import::IImportList::CheckAncestorList;
    return static_cast<std::size_t>(ranges::distance(list.getPackageImportEntries(Yes)) +
                                    ranges::distance(list.getFullyQualifiedImportEntries(Yes)));
}

void countEnumeration(std::size_t depth) {
    workload::Draws draws;
    workload::NameSource names(draws);
    workload::ImportLists const lists(
        workload::makeScopes(names, draws, depth, importsPerScope, workload::Repetition::Natural));
    count("enumerate/depth:" + std::to_string(depth),
          [&] { return enumerate(lists.innermost()) > 0; });
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
    countEnumeration(16);

    workload::Draws draws;
    workload::NameSource names(draws);
    workload::Imports const imports =
        workload::makeScopes(names, draws, 1, 1'000, workload::Repetition::None).front();
    countParsing("parse_packages", imports.packages, Behavior::WithPackageImports);
    countParsing("parse_names", imports.fullyQualified, Behavior::WithPackageImports);
    countParsing("parse_legacy_names", imports.fullyQualified, Behavior::WithoutPackageImports);
}

using Entries = std::vector<lf::import::ImportEntry>;

// None of them is refused.
bool addAll(lf::import::IImportList& list, Entries& entries) {
    bool areAccepted = true;
    for (lf::import::ImportEntry& entry : entries) {
        areAccepted = !list.addStaticImportEntry(std::move(entry)) && areAccepted;
    }
    return areAccepted;
}

// All names share their root element.
void countGrowth(std::vector<std::u16string> const& names, std::size_t size) {
    Entries entries;
    for (std::size_t i = 0; i < size; ++i) {
        entries.emplace_back(support::makeName(u"root." + names[i]));
    }
    auto const list = lf::import::createImportList(nullptr);
    std::string const at = "/entries:" + std::to_string(size);
    countOnce("add_names" + at, [&] { return addAll(*list, entries); });
    countOnce("find_names" + at, [&] {
        return std::all_of(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(size),
                           [&](std::u16string const& name) {
                               return list->findFullyQualifiedImportEntry(name, {}).has_value();
                           });
    });
    std::unique_ptr<lf::import::IImportList> copy;
    countOnce("clone_names" + at, [&] {
        copy = list->clone();
        return copy->getNumberOfEntries({}) == size;
    });
}

// The indexes that names can flood. Texts are composed so that only one index collides.
struct FloodedIndex {
    std::string name;
    std::u16string start; ///< of the colliding text, and a multiple of four units
    lf::import::ImportEntry (*makeEntry)(std::u16string const& text, std::size_t number);
};

lf::import::ImportEntry makePackageAs(std::u16string const& text, std::size_t /*number*/) {
    return support::makePackage(u"package", text);
}

lf::import::ImportEntry makeNameIntroducing(std::u16string const& text, std::size_t /*number*/) {
    return support::makeName(u"root." + text);
}

lf::import::ImportEntry makeNameWritten(std::u16string const& text, std::size_t /*number*/) {
    return support::makeName(text);
}

lf::import::ImportEntry makeNameBelow(std::u16string const& text, std::size_t number) {
    std::string const digits = std::to_string(number);
    return support::makeName(text + u".name" + std::u16string(digits.begin(), digits.end()));
}

std::u16string_view introducedName(lf::import::ImportEntry const& entry) {
    auto const* const package = std::get_if<lf::import::PackageImportEntry>(&entry);
    return package != nullptr
               ? package->getIntroducedName()
               : std::get<lf::import::FullyQualifiedImportEntry>(entry).getIntroducedName();
}

bool findsAny(lf::import::IImportList const& list, std::u16string_view name) {
    using enum lf::import::IImportList::CheckAncestorList;
    return list.findPackageImportEntry(name, Yes) || list.findFullyQualifiedImportEntry(name, Yes);
}

// Of two nested lists, both flooded.
void countFlood(FloodedIndex const& index, workload::Flood flood) {
    constexpr std::size_t count = 10'000;
    std::vector<std::u16string> const texts = workload::makeFlood(flood, count, index.start);
    Entries outerEntries;
    Entries entries;
    std::vector<std::u16string> names;
    for (std::size_t i = 0; i < count; ++i) {
        Entries& half = i % 2 == 0 ? outerEntries : entries;
        half.push_back(index.makeEntry(texts[i], i));
        names.emplace_back(introducedName(half.back()));
    }
    std::shared_ptr<lf::import::IImportList> const outer = lf::import::createImportList(nullptr);
    require(addAll(*outer, outerEntries), index.name);
    auto const list = lf::import::createImportList(outer);

    auto const nameOf = [&](std::string_view operation) {
        return index.name + '/' + std::string(operation) +
               (flood == workload::Flood::Colliding ? "/colliding" : "/random");
    };
    countOnce(nameOf("add"), [&] { return addAll(*list, entries); });
    countOnce(nameOf("find"), [&] {
        return std::ranges::all_of(names, [&](auto const& name) { return findsAny(*list, name); });
    });
    countOnce(nameOf("enumerate"), [&] { return enumerate(*list) == count; });
    std::unique_ptr<lf::import::IImportList> copy;
    countOnce(nameOf("clone"), [&] {
        copy = list->clone();
        return copy->getNumberOfEntries({}) == count / 2;
    });
}

void countAllGrowth() {
    workload::Draws draws;
    std::vector<std::u16string> const names = workload::NameSource(draws).take(1'000'000);
    for (std::size_t size = 1'000; size <= names.size(); size *= 10) {
        countGrowth(names, size);
    }
}

void countAllFloods() {
    std::vector<FloodedIndex> const indexes = {
        {"packages", u"", makePackageAs},
        {"introduced names", u"", makeNameIntroducing},
        {"raw arguments", u"r.ab", makeNameWritten},
        {"root elements", u"", makeNameBelow},
    };
    for (FloodedIndex const& index : indexes) {
        countFlood(index, workload::Flood::Colliding);
        countFlood(index, workload::Flood::Random);
    }
}

} // namespace

int main(int argc, char** argv) {
    std::string_view const work = argc == 1 ? "regressions" : argv[1];
    if (work == "growth") {
        countAllGrowth();
    } else if (work == "flood") {
        countAllFloods();
    } else {
        countRegressions();
    }
}
