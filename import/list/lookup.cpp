// SPDX-License-Identifier: BSL-1.0

// Lookup by introduced name. An import of the other kind hides a name only in the list that the
// lookup starts from; otherwise the nearest list that holds the name answers. So one walk outward
// with one hash is enough for a chain.
//
// A foreign list answers for itself and for those of its ancestors that it knows. If it finds
// nothing, the walk continues with the parent that it returns.

#include <import/list/foreign_results.hpp>
#include <import/list/import_list.hpp>

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>
#include <vector>

namespace lf::import {

namespace {

using CheckAncestorList = IImportList::CheckAncestorList;
using Share = std::shared_ptr<IImportList const>;

// The differences between the lookups of the two kinds.

struct PackageLookup {
    using Entry = PackageImportEntry;
    using HidingEntry = FullyQualifiedImportEntry;
    using Found = FoundImportEntry;

    static constexpr auto ask = &IImportList::findPackageImportEntry;

    static Found found(Entry const& entry, EntryOrigin origin) { return {entry, origin}; }

    static Found fromAncestor(Found const& answer) { return {answer.entry, EntryOrigin::Ancestor}; }
};

struct FullyQualifiedLookup {
    using Entry = FullyQualifiedImportEntry;
    using HidingEntry = PackageImportEntry;
    using Found = FoundFullyQualifiedName;

    static constexpr auto ask = &IImportList::findFullyQualifiedImportEntry;

    static Found found(Entry const& entry, EntryOrigin origin) {
        return {entry.getRawArgument(), origin};
    }

    static Found fromAncestor(Found const& answer) {
        return {answer.rawArgument, EntryOrigin::Ancestor};
    }
};

// \p lists from the first one whose filter lets the name pass.
template <typename Entry>
ListChain fromFirstThatMayHold(ListChain lists, NameKey const& name) noexcept {
    auto const first = std::ranges::find_if(
        lists, [&](ImportList const& list) { return list.indexByName<Entry>().mayHold(name); });
    return ListChain(first);
}

// The entry of the nearest of \p lists that has one, or null.
template <typename Entry>
Entry const* findInChain(ListChain lists, NameKey const& name) noexcept {
    for (ImportList const& list : lists) {
        if (auto const* const entry = list.findOwn<Entry>(name)) {
            return entry;
        }
    }
    return nullptr;
}

// \p resultFrom returns the result of an earlier walk from a list, or null.
template <typename Kind, typename ResultFrom>
std::optional<typename Kind::Found> walkOutward(Share const* foreign, NameKey const& name,
                                                ResultFrom resultFrom) {
    Share held;
    while (*foreign != nullptr) {
        if (auto const* const known = resultFrom(*foreign)) {
            if (known->failure) {
                std::rethrow_exception(known->failure);
            }
            return known->found;
        }
        if (auto const answer = ((**foreign).*Kind::ask)(name.text, CheckAncestorList::Yes)) {
            return Kind::fromAncestor(*answer);
        }
        held = (*foreign)->getParent();
        ImportList const* const list = asImportList(held.get());
        if (auto const* const entry = findInChain<typename Kind::Entry>(ListChain(list), name)) {
            return Kind::found(*entry, EntryOrigin::Ancestor);
        }
        foreign = list != nullptr ? &list->foreignAncestor() : &held;
    }
    return std::nullopt;
}

template <typename Kind>
std::optional<typename Kind::Found> findBeyond(Share const& foreign, NameKey const& name) {
    using Found = typename Kind::Found;
    if (ForeignResults* const outer = ForeignResults::ofOuterLookup()) {
        std::vector<Share> passed;
        auto const resultFrom = [&](Share const& list) {
            auto const* const known = outer->find<Found>(*list, name.text);
            if (known == nullptr) {
                passed.push_back(list);
            }
            return known;
        };
        try {
            auto const found = walkOutward<Kind>(&foreign, name, resultFrom);
            outer->keep<Found>(std::move(passed), name.text, {found});
            return found;
        } catch (...) {
            outer->keep<Found>(std::move(passed), name.text,
                               {std::nullopt, std::current_exception()});
            throw;
        }
    }
    ForeignResults results;
    return walkOutward<Kind>(
        &foreign, name, [&](Share const& list) { return results.find<Found>(*list, name.text); });
}

// The part of a lookup that filters alone cannot answer. It is not inlined, so that a lookup that
// they answer does not set up a frame for it.
template <typename Kind>
[[gnu::noinline]] std::optional<typename Kind::Found>
lookUpFrom(ImportList const& asked, ListChain candidates, std::u16string_view text, NameHash hash,
           CheckAncestorList check) {
    using Entry = typename Kind::Entry;
    NameKey const name(text, hash);
    if (candidates.begin() == asked.chain().begin()) {
        if (auto const* const entry = asked.findOwn<Entry>(name)) {
            return Kind::found(*entry, EntryOrigin::ThisList);
        }
        if (check != CheckAncestorList::Yes ||
            asked.findOwn<typename Kind::HidingEntry>(name) != nullptr) {
            return std::nullopt;
        }
        candidates = asked.ancestors();
    }
    if (auto const* const entry = findInChain<Entry>(candidates, name)) {
        return Kind::found(*entry, EntryOrigin::Ancestor);
    }
    Share const& foreign = asked.foreignAncestor();
    return foreign == nullptr ? std::nullopt : findBeyond<Kind>(foreign, name);
}

template <typename Kind>
std::optional<typename Kind::Found> lookUp(ImportList const& asked, NameKey const& name,
                                           CheckAncestorList check) {
    ListChain candidates = asked.chain();
    if (!asked.indexByName<typename Kind::Entry>().mayHold(name) &&
        !asked.indexByName<typename Kind::HidingEntry>().mayHold(name)) {
        if (check != CheckAncestorList::Yes) {
            return std::nullopt;
        }
        candidates = fromFirstThatMayHold<typename Kind::Entry>(asked.ancestors(), name);
        if (candidates.isEmpty() && asked.foreignAncestor() == nullptr) {
            return std::nullopt;
        }
    }
    return lookUpFrom<Kind>(asked, candidates, name.text, name.hash, check);
}

} // namespace

std::optional<FoundImportEntry> ImportList::findPackage(NameKey const& name,
                                                        CheckAncestorList check) const {
    return lookUp<PackageLookup>(*this, name, check);
}

[[gnu::flatten]] std::optional<FoundImportEntry>
ImportList::findPackageImportEntry(std::u16string_view name, CheckAncestorList check) const {
    return lookUp<PackageLookup>(*this, NameKey(name, key), check);
}

[[gnu::flatten]] std::optional<FoundFullyQualifiedName>
ImportList::findFullyQualifiedImportEntry(std::u16string_view name, CheckAncestorList check) const {
    return lookUp<FullyQualifiedLookup>(*this, NameKey(name, key), check);
}

} // namespace lf::import
