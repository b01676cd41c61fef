// SPDX-License-Identifier: BSL-1.0

/// \file
/// Operations whose cost must not grow faster than their input, and chosen names that must not cost
/// more than random ones. Lets callgrind write the instructions of each operation for n, 2n and 4n,
/// and of each flood of chosen names and the same number of random names; growth_test.py compares
/// them. Without valgrind, the program runs the operations and writes nothing.

#include "colliding_names.hpp"

#include <flood.hpp>
#include <support/counted_instructions.hpp>
#include <support/foreign_import_list.hpp>
#include <support/make_entries.hpp>

#include <import/import.hpp>

#include <range/v3/range/primitives.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using lf::import::createImportList;
using lf::import::FullyQualifiedImportArgument;
using lf::import::FullyQualifiedImportEntry;
using lf::import::IImportList;
using lf::import::ImportEntry;
using lf::import::PackageImportEntry;
using lf::import::PackageNameImportArgument;
using lf::import::WildcardImportArgument;
using lf::import::WildcardImportEntry;
using support::CountedInstructions;
using support::DelegatingImportList;
using support::writeDownInstructions;
using workload::Flood;
using enum IImportList::CheckAncestorList;

using List = std::shared_ptr<IImportList>;
using Texts = std::vector<std::u16string>;

/// Ends the program if a subject has a wrong result: its instructions would be meaningless.
void require(bool isRight) {
    if (!isRight) {
        std::cerr << "a subject has a wrong result\n";
        std::exit(EXIT_FAILURE);
    }
}

std::u16string numbered(std::u16string const& text, std::size_t number) {
    std::string const digits = std::to_string(number);
    return text + std::u16string(digits.begin(), digits.end());
}

// Entries. Their texts need not be identifiers: lists do not check them.

ImportEntry packageAs(std::u16string const& name) {
    static PackageImportEntry const package(PackageNameImportArgument{u"package"});
    return PackageImportEntry(PackageImportEntry(package), PackageNameImportArgument{name});
}

ImportEntry dotted(std::u16string const& root, std::u16string const& name,
                   std::u16string const& raw) {
    return FullyQualifiedImportEntry(FullyQualifiedImportArgument{root, name, raw, {}});
}

ImportEntry nameIntroducing(std::u16string const& name, std::size_t number) {
    return dotted(u"root", name, numbered(u"raw", number));
}

ImportEntry nameWritten(std::u16string const& raw, std::size_t number) {
    return dotted(u"root", numbered(u"name", number), raw);
}

ImportEntry nameBelow(std::u16string const& root, std::size_t number) {
    return dotted(root, numbered(u"name", number), numbered(u"raw", number));
}

ImportEntry wildcardWritten(std::u16string const& raw, std::size_t /*number*/) {
    return WildcardImportEntry(WildcardImportArgument{u"root", raw, {}});
}

using MakeEntry = ImportEntry (*)(std::u16string const& text, std::size_t number);

ImportEntry packageIntroducing(std::u16string const& name, std::size_t /*number*/) {
    return packageAs(name);
}

std::vector<ImportEntry> makeEntries(MakeEntry make, Texts const& texts) {
    std::vector<ImportEntry> entries;
    for (std::u16string const& text : texts) {
        entries.push_back(make(text, entries.size()));
    }
    return entries;
}

void add(std::vector<ImportEntry>&& entries, IImportList& list) {
    for (ImportEntry& entry : entries) {
        require(!list.addStaticImportEntry(std::move(entry)));
    }
}

Texts numberedTexts(std::size_t count) {
    Texts texts;
    for (std::size_t number = 0; number < count; ++number) {
        texts.push_back(numbered(u"text", number));
    }
    return texts;
}

/// The number of entries of \p list and its ancestors that are visible.
std::ptrdiff_t enumerate(IImportList const& list) {
    return ranges::distance(list.getFullyQualifiedImportEntries(Yes)) +
           ranges::distance(list.getWildcardImportEntries(Yes)) +
           ranges::distance(list.getPackageImportEntries(Yes));
}

std::size_t countFound(IImportList const& list, Texts const& names) {
    return static_cast<std::size_t>(std::ranges::count_if(names, [&](std::u16string const& name) {
        return list.findPackageImportEntry(name, Yes) ||
               list.findFullyQualifiedImportEntry(name, Yes);
    }));
}

// Subjects.

List filledList(MakeEntry make, std::size_t count) {
    List list = createImportList(nullptr);
    add(makeEntries(make, numberedTexts(count)), *list);
    return list;
}

template <MakeEntry Make>
void measureAdding(std::size_t n) {
    auto entries = makeEntries(Make, numberedTexts(n));
    auto const list = createImportList(nullptr);
    CountedInstructions const counting;
    add(std::move(entries), *list);
}

template <MakeEntry Make>
void measureFinding(std::size_t n) {
    List const list = filledList(Make, n);
    Texts const names = numberedTexts(n);
    CountedInstructions const counting;
    require(countFound(*list, names) == n);
}

template <MakeEntry Make>
void measureEnumerating(std::size_t n) {
    List const list = filledList(Make, n);
    List const inner = createImportList(createImportList(list));
    CountedInstructions const counting;
    require(enumerate(*inner) == static_cast<std::ptrdiff_t>(n));
}

template <MakeEntry Make>
void measureCloning(std::size_t n) {
    List const list = filledList(Make, n);
    CountedInstructions const counting;
    require(list->clone()->getNumberOfEntries(No) == n);
}

/// A list of the library that is nested \p depth levels deeper than \p list.
List nest(List list, std::size_t depth) {
    for (std::size_t level = 0; level < depth; ++level) {
        list = createImportList(std::move(list));
    }
    return list;
}

/// The same with foreign lists and lists of the library in turn.
List nestInForeignOnes(List list, std::size_t depth) {
    for (std::size_t level = 0; level < depth; ++level) {
        list = std::make_shared<DelegatingImportList>(createImportList(std::move(list)));
    }
    return createImportList(std::move(list));
}

using Nest = List (*)(List list, std::size_t depth);

List listWithOneOfEachKind() {
    List list = createImportList(nullptr);
    require(!list->addStaticImportEntry(packageAs(u"package")));
    require(!list->addStaticImportEntry(support::makeName(u"root.name")));
    require(!list->addStaticImportEntry(support::makeWildcard(u"root.*")));
    return list;
}

template <Nest NestIn>
void measureMissing(std::size_t n) {
    List const list = NestIn(listWithOneOfEachKind(), n);
    CountedInstructions const counting;
    require(countFound(*list, {u"missing"}) == 0);
}

template <Nest NestIn>
void measureFindingOutside(std::size_t n) {
    List const list = NestIn(listWithOneOfEachKind(), n);
    CountedInstructions const counting;
    require(countFound(*list, {u"package", u"name"}) == 2);
}

template <Nest NestIn>
void measureAddingInside(std::size_t n) {
    List const list = NestIn(listWithOneOfEachKind(), n);
    CountedInstructions const counting;
    require(!list->addStaticImportEntry(support::makeName(u"other.name")));
    require(list->addStaticImportEntry(support::makeName(u"package.name")).has_value());
}

template <Nest NestIn>
void measureEnumeratingInside(std::size_t n) {
    List const list = NestIn(listWithOneOfEachKind(), n);
    CountedInstructions const counting;
    require(enumerate(*list) == 3);
}

/// Each list has its own package, so each entry is checked against every list on the way to it.
template <Nest NestIn>
void measureEnumeratingAnEntryOfEach(std::size_t n) {
    List list;
    for (std::size_t number = 0; number < n; ++number) {
        list = NestIn(std::move(list), 1);
        require(!list->addStaticImportEntry(packageAs(numbered(u"package", number))));
    }
    CountedInstructions const counting;
    require(enumerate(*list) == static_cast<std::ptrdiff_t>(n));
}

template <Nest NestIn>
void measureTotals(std::size_t n) {
    List const list = NestIn(createImportList(nullptr), n);
    CountedInstructions const counting;
    require(list->isEmpty(Yes) && list->getNumberOfEntries(Yes) == 0);
}

template <Nest NestIn>
void measureDestroying(std::size_t n) {
    List list = NestIn(createImportList(nullptr), n);
    CountedInstructions const counting;
    list.reset();
}

void measureParsing(Texts command, std::size_t entries) {
    CountedInstructions const counting;
    auto const parser =
        lf::import::createImportArgumentParser(command, lf::import::Behavior::WithPackageImports);
    require(parser->parse().size() == entries);
}

void measureParsingNames(std::size_t n) {
    measureParsing(Texts(n, u"root.name"), n);
}

void measureParsingPackages(std::size_t n) {
    measureParsing(Texts(n, u"package@^1.2"), n);
}

void measureParsingIgnoredArguments(std::size_t n) {
    measureParsing(Texts(n, u""), 0);
}

void measureParsingALongName(std::size_t n) {
    std::u16string name;
    for (std::size_t segment = 0; segment < n; ++segment) {
        name += u"segment.";
    }
    measureParsing({name + u"name"}, 1);
}

/// An operation that is measured for n, 2n and 4n.
struct Subject {
    std::string_view why;
    void (*measure)(std::size_t n);
    std::size_t n;
    std::string_view growth = "growth"; ///< or "square" for quadratic growth
};

constexpr Subject subjects[]{
    {"packages are added", measureAdding<packageIntroducing>, 100},
    {"names are added", measureAdding<nameIntroducing>, 100},
    {"wildcards are added", measureAdding<wildcardWritten>, 100},
    {"packages are found", measureFinding<packageIntroducing>, 100},
    {"names are found", measureFinding<nameIntroducing>, 100},
    {"packages are enumerated", measureEnumerating<packageIntroducing>, 100},
    {"names are enumerated", measureEnumerating<nameIntroducing>, 100},
    {"wildcards are enumerated", measureEnumerating<wildcardWritten>, 100},
    {"packages are cloned", measureCloning<packageIntroducing>, 100},
    {"names are cloned", measureCloning<nameIntroducing>, 100},

    {"a name is missing in nested lists", measureMissing<nest>, 100},
    {"names are found outside nested lists", measureFindingOutside<nest>, 100},
    {"a name is added inside nested lists", measureAddingInside<nest>, 100},
    {"entries are enumerated inside nested lists", measureEnumeratingInside<nest>, 100},
    {"an entry of each of nested lists is enumerated", measureEnumeratingAnEntryOfEach<nest>, 25,
     "square"},
    {"the entries of nested lists are counted", measureTotals<nest>, 100},
    {"nested lists are destroyed", measureDestroying<nest>, 100},

    {"a name is missing in nested foreign lists", measureMissing<nestInForeignOnes>, 50},
    {"names are found outside nested foreign lists", measureFindingOutside<nestInForeignOnes>, 50},
    {"a name is added inside nested foreign lists", measureAddingInside<nestInForeignOnes>, 50},
    {"entries are enumerated inside nested foreign lists",
     measureEnumeratingInside<nestInForeignOnes>, 50},
    {"an entry of each of nested lists is enumerated, foreign ones in turn",
     measureEnumeratingAnEntryOfEach<nestInForeignOnes>, 12, "square"},
    {"the entries of nested foreign lists are counted", measureTotals<nestInForeignOnes>, 50},
    {"nested foreign lists are destroyed", measureDestroying<nestInForeignOnes>, 50},

    {"names are parsed", measureParsingNames, 25},
    {"packages are parsed", measureParsingPackages, 25},
    {"ignored arguments are parsed", measureParsingIgnoredArguments, 100},
    {"a name of many segments is parsed", measureParsingALongName, 50},
};

// Floods.

/// A text of an entry that has its own index. In a flood, only this text is chosen.
struct FloodedIndex {
    std::string_view why;
    MakeEntry make;
};

constexpr FloodedIndex floodedIndexes[]{
    {"packages", packageIntroducing},
    {"introduced names", nameIntroducing},
    {"raw arguments", nameWritten},
    {"root elements", nameBelow},
};

/// Measures two nested lists with half of the entries each.
void measureFlood(FloodedIndex const& index, Texts const& texts, std::string const& names) {
    auto const nameOf = [&](std::string const& operation) {
        return "flood: " + std::string(index.why) + ", " + operation + ": " + names;
    };
    auto const half = static_cast<std::ptrdiff_t>(texts.size() / 2);
    List const outer = createImportList(nullptr);
    add(makeEntries(index.make, {texts.begin(), texts.begin() + half}), *outer);
    auto const list = createImportList(outer);
    // Numbered after the entries of the outer list, so that no entry hides another.
    std::vector<ImportEntry> entries = makeEntries(index.make, texts);
    entries.erase(entries.begin(), entries.begin() + half);
    {
        CountedInstructions const counting;
        add(std::move(entries), *list);
    }
    writeDownInstructions(nameOf("adding"));
    {
        CountedInstructions const counting;
        static_cast<void>(countFound(*list, texts));
    }
    writeDownInstructions(nameOf("finding"));
    {
        CountedInstructions const counting;
        require(enumerate(*list) == static_cast<std::ptrdiff_t>(texts.size()));
    }
    writeDownInstructions(nameOf("enumerating"));
    {
        CountedInstructions const counting;
        require(list->clone()->getNumberOfEntries(Yes) == texts.size());
    }
    writeDownInstructions(nameOf("cloning"));
}

void measureAllFloods() {
    constexpr std::size_t size = 2'000;

    struct {
        std::string name;
        Texts texts;
    } const floods[]{
        {"8 units at random", workload::makeFlood(Flood::Random, size)},
        {"8 units of one standard hash", workload::makeFlood(Flood::Colliding, size)},
        {"4 units at random", growth::makeBlocks(size)},
        {"4 units of one hash without a key", growth::makeBlocksOfOneHash(size)},
    };

    for (FloodedIndex const& index : floodedIndexes) {
        for (auto const& [name, texts] : floods) {
            measureFlood(index, texts, name);
        }
    }
}

} // namespace

int main() {
    for (auto const& [why, measure, n, growth] : subjects) {
        for (std::size_t const size : {n, 2 * n, 4 * n}) {
            measure(size);
            writeDownInstructions(std::string(growth) + ": " + std::string(why) + ": " +
                                  std::to_string(size));
        }
    }
    measureAllFloods();
}
