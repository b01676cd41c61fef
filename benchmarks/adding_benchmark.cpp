// SPDX-License-Identifier: BSL-1.0

// The cost of adding an entry to a list: amortised over the growth of an empty list, and for
// entries that a list already has or refuses.

#include "floors/described_containers.hpp"
#include "measurement.hpp"
#include "subjects.hpp"
#include "workload.hpp"

#include <model/list_model.hpp>
#include <support/make_entries.hpp>
#include <support/observed_entries.hpp>

#include <import/entries.hpp>
#include <import/import_list.hpp>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace benchmarks {

namespace {

using lf::import::ImportEntry;
using model::Outcome;
using workload::NameShape;

// Contestants: how to create a list and add to it.

struct Gleigem {
    static constexpr std::string_view name = "gleigem";
    static constexpr std::size_t longest = 1'000'000;
    using Entry = ImportEntry;
    using List = std::unique_ptr<lf::import::IImportList>;

    static List create() { return lf::import::createImportList(nullptr); }

    static auto add(List& list, Entry& entry) {
        return list->addStaticImportEntry(std::move(entry));
    }

    static auto addDynamic(List& list, Entry& entry) {
        return list->addDynamicImportEntry(std::move(entry));
    }

    static std::size_t size(List const& list) {
        return list->getNumberOfEntries(lf::import::IImportList::CheckAncestorList::No);
    }

    static std::string keyOf(resource_core::GenericMsgIDHolder const& refusal) {
        return refusal.getMsgID().key;
    }

    static Entry makeEntry(ImportEntry&& entry) { return std::move(entry); }
};

struct ByHand {
    static constexpr std::string_view name = "by_hand";
    static constexpr std::size_t longest = 1'000'000;
    using Entry = ImportEntry;
    using List = std::unique_ptr<floors::DescribedContainers>;

    static List create() { return std::make_unique<floors::DescribedContainers>(); }

    static bool add(List& list, Entry& entry) {
        list->add(std::move(entry));
        return false; // refuses nothing
    }

    static std::size_t size(List const& list) { return list->size(); }

    static Entry makeEntry(ImportEntry&& entry) { return std::move(entry); }
};

struct Model {
    static constexpr std::string_view name = "model";
    static constexpr std::size_t longest = 10'000;
    using Entry = Outcome;
    using List = std::unique_ptr<model::List>;

    static List create() { return model::createList(nullptr); }

    static auto add(List& list, Entry& entry) { return list->addStatic(entry); }

    static std::size_t size(List const& list) { return list->numberOfEntries(model::thisListOnly); }

    static std::string keyOf(Outcome const& refusal) { return refusal.key; }

    static Entry makeEntry(ImportEntry&& entry) {
        return std::visit([](auto const& alternative) { return support::describe(alternative); },
                          entry);
    }
};

std::vector<std::u16string> const& namesFor(NameShape shape, std::size_t count) {
    static std::map<NameShape, std::vector<std::u16string>> namesByShape;
    std::vector<std::u16string>& names = namesByShape[shape];
    if (names.size() < count) {
        workload::Draws draws;
        names = workload::NameSource(draws, shape).take(count);
    }
    return names;
}

// Kinds of entry: each creates the entry with a given number; entries with different numbers never
// conflict.
using EntryMaker = ImportEntry (*)(std::size_t number, std::vector<std::u16string> const& names);

ImportEntry makePackage(std::size_t number, std::vector<std::u16string> const& names) {
    return support::makePackage(names[number]);
}

// Eight names share a root element.
std::u16string dottedName(std::size_t number, std::vector<std::u16string> const& names) {
    return names[number / 8] + u'.' + names[number];
}

ImportEntry makeFullyQualified(std::size_t number, std::vector<std::u16string> const& names) {
    return support::makeName(dottedName(number, names));
}

ImportEntry makeFullyQualifiedOfOneRoot(std::size_t number,
                                        std::vector<std::u16string> const& names) {
    return support::makeName(names.front() + u'.' + names[number]);
}

ImportEntry makeWildcard(std::size_t number, std::vector<std::u16string> const& names) {
    return support::makeWildcard(dottedName(number, names) + u".*");
}

// The entries to fill a list with.
struct Filling {
    EntryMaker make;
    std::size_t count;
    NameShape names = NameShape::RandomWords;
};

template <typename Contestant>
std::vector<typename Contestant::Entry> makeEntries(Filling filling) {
    std::vector<std::u16string> const& names = namesFor(filling.names, filling.count);
    std::vector<typename Contestant::Entry> entries;
    entries.reserve(filling.count);
    for (std::size_t number = 0; number < filling.count; ++number) {
        entries.push_back(Contestant::makeEntry(filling.make(number, names)));
    }
    return entries;
}

template <typename Contestant>
using Addition = decltype(&Contestant::add);

// Checks that the first thousand entries are neither refused nor skipped; the measured loop only
// checks the size.
template <typename Contestant>
void checkGrowth(Filling filling, Addition<Contestant> addTo) {
    filling.count = std::min<std::size_t>(filling.count, 1'000);
    auto entries = makeEntries<Contestant>(filling);
    typename Contestant::List list = Contestant::create();
    for (typename Contestant::Entry& entry : entries) {
        require(!addTo(list, entry), "an entry that is added");
    }
    require(Contestant::size(list) == entries.size(), "the number of added entries");
}

template <typename Contestant>
void measureGrowth(benchmark::State& state, Filling filling, Addition<Contestant> addTo) {
    constexpr std::size_t leastAdditions = 2'048; // that are timed in one go
    std::size_t const numberOfLists = std::max<std::size_t>(1, leastAdditions / filling.count);
    checkGrowth<Contestant>(filling, addTo);
    std::vector<std::vector<typename Contestant::Entry>> supplies(numberOfLists);
    std::vector<typename Contestant::List> lists(numberOfLists);
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        measurement.pause();
        std::ranges::generate(supplies, [&] { return makeEntries<Contestant>(filling); });
        measurement.resume();
        for (std::size_t i = 0; i < numberOfLists; ++i) {
            lists[i] = Contestant::create();
            for (typename Contestant::Entry& entry : supplies[i]) {
                auto const refusal = addTo(lists[i], entry);
                benchmark::DoNotOptimize(refusal);
            }
        }
        measurement.pause();
        require(Contestant::size(lists.back()) == filling.count, "the growth of a list");
        std::ranges::generate(lists, [] { return typename Contestant::List(); });
        measurement.resume();
    }
    measurement.report(numberOfLists * filling.count);
}

// The memory of a list with these entries, without anything that was only needed to fill it.
template <typename Contestant>
std::size_t bytesOfList(Filling filling) {
    namesFor(filling.names, filling.count);
    std::size_t const before = support::countLiveBytes();
    typename Contestant::List list = Contestant::create();
    for (typename Contestant::Entry& entry : makeEntries<Contestant>(filling)) {
        Contestant::add(list, entry);
    }
    require(Contestant::size(list) == filling.count, "the number of entries in memory");
    return support::countLiveBytes() - before;
}

template <typename Contestant>
void measureMemory(benchmark::State& state, Filling filling) {
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        bytes = bytesOfList<Contestant>(filling);
    }
    state.counters["bytes_per_entry"] =
        static_cast<double>(bytes) / static_cast<double>(filling.count);
}

// Entries of one kind in a list, and others offered to it that it does not store.
struct Offer {
    std::string_view name;
    EntryMaker makeHeld;
    EntryMaker makeOffered;
    std::string_view refusal; ///< key of the message; empty when the offer is accepted
};

ImportEntry makeNameBelowPackage(std::size_t number, std::vector<std::u16string> const& names) {
    return support::makeName(names[number] + u".of." + names[number]);
}

constexpr Offer duplicates{"add_duplicate", makeFullyQualified, makeFullyQualified, ""};

constexpr auto refusals = std::to_array<Offer>({
    {"refuse_redeclared_package", makePackage, makePackage, "PackageRedeclared"},
    {"refuse_package_of_name", makeFullyQualified, makePackage, "PrecedenceViolation"},
    {"refuse_name_below_package", makePackage, makeNameBelowPackage, "PrecedenceViolation"},
});

template <typename Contestant>
void measureOffer(benchmark::State& state, Offer offer, std::size_t count) {
    typename Contestant::List list = Contestant::create();
    for (auto& entry : makeEntries<Contestant>({offer.makeHeld, count})) {
        Contestant::add(list, entry);
    }
    auto const all = makeEntries<Contestant>({offer.makeOffered, count});
    workload::Draws draws;
    std::vector<typename Contestant::Entry> offered;
    for (std::size_t i = 0; i < workload::numberOfKeys; ++i) {
        offered.push_back(draws.oneOf(all));
        auto const refusal = Contestant::add(list, offered.back());
        require(static_cast<bool>(refusal) == !offer.refusal.empty(), std::string(offer.name));
        if constexpr (requires { Contestant::keyOf(*refusal); }) {
            require(!refusal || Contestant::keyOf(*refusal) == offer.refusal,
                    std::string(offer.name));
        }
    }
    std::size_t next = 0;
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        auto const refusal = Contestant::add(list, offered[next]);
        benchmark::DoNotOptimize(refusal);
        next = (next + 1) % workload::numberOfKeys;
    }
    measurement.report(1);
    require(Contestant::size(list) == count, std::string(offer.name));
}

template <typename Contestant>
std::string nameOf(std::string_view subject, std::size_t count) {
    return std::string(subject) + '/' + std::string(Contestant::name) +
           "/entries:" + std::to_string(count);
}

template <typename Contestant>
std::string nameOf(std::string_view subject, Filling filling) {
    return nameOf<Contestant>(subject, filling.count) +
           "/names:" + std::string(toString(filling.names));
}

template <typename Contestant>
void registerFilling(std::string_view subject, Filling filling,
                     Addition<Contestant> addition = &Contestant::add) {
    add(nameOf<Contestant>(subject, filling),
        [=](benchmark::State& state) { measureGrowth<Contestant>(state, filling, addition); });
}

// From one entry to very many, for the plots.
template <typename Contestant>
void registerGrowth(std::string_view subject, EntryMaker make, std::size_t longest,
                    Addition<Contestant> addition = &Contestant::add) {
    for (std::size_t const count : {1, 15, 100, 1'000, 10'000, 100'000, 1'000'000}) {
        if (count <= std::min(longest, Contestant::longest)) {
            registerFilling<Contestant>(subject, {make, count}, addition);
        }
    }
}

constexpr auto targetSizes = std::to_array<std::size_t>({15, 1'000, 100'000});

template <typename Contestant>
void registerShapes(std::string_view subject, EntryMaker make) {
    for (NameShape const names : {NameShape::Alike, NameShape::ClassNames}) {
        for (std::size_t const count : targetSizes) {
            registerFilling<Contestant>(subject, {make, count, names});
        }
    }
}

template <typename Contestant>
void registerMemory(std::string_view subject, EntryMaker make) {
    for (NameShape const names : workload::nameShapes) {
        for (std::size_t const count : targetSizes) {
            Filling const filling{make, count, names};
            add(nameOf<Contestant>(subject, filling),
                [=](benchmark::State& state) { measureMemory<Contestant>(state, filling); })
                ->Iterations(1)
                ->Repetitions(1);
        }
    }
}

template <typename Contestant>
void registerOffer(Offer const& offer) {
    for (std::size_t const count : {8, 1'000, 100'000}) {
        if (count <= Contestant::longest) {
            add(nameOf<Contestant>(offer.name, count),
                [=](benchmark::State& state) { measureOffer<Contestant>(state, offer, count); });
        }
    }
}

// Filling lists of a million takes long, so not all kinds do.
constexpr std::size_t longList = 100'000;
constexpr std::size_t longestList = 1'000'000;

template <typename Contestant>
void registerContestant() {
    registerGrowth<Contestant>("add_package", makePackage, longestList);
    registerGrowth<Contestant>("add_fully_qualified", makeFullyQualified, longList);
    registerGrowth<Contestant>("add_fully_qualified_of_one_root", makeFullyQualifiedOfOneRoot,
                               longestList);
    registerGrowth<Contestant>("add_wildcard", makeWildcard, longList);
    registerOffer<Contestant>(duplicates);
}

template <typename Contestant>
void registerBesideByHand() {
    registerShapes<Contestant>("add_fully_qualified", makeFullyQualified);
    registerMemory<Contestant>("memory_of_package", makePackage);
    registerMemory<Contestant>("memory_of_fully_qualified", makeFullyQualified);
    registerMemory<Contestant>("memory_of_wildcard", makeWildcard);
}

} // namespace

void registerAdding() {
    registerContestant<Gleigem>();
    registerContestant<ByHand>();
    registerContestant<Model>();
    registerBesideByHand<Gleigem>();
    registerBesideByHand<ByHand>();
    registerGrowth<Gleigem>("add_dynamic_package", makePackage, longList, &Gleigem::addDynamic);
    for (Offer const& refusal : refusals) {
        registerOffer<Gleigem>(refusal);
        registerOffer<Model>(refusal);
    }
}

} // namespace benchmarks
