// SPDX-License-Identifier: BSL-1.0

// Lookup by introduced name. An import of the other kind hides a name only in the list that is
// asked; beyond it the nearest ancestor that itself holds the name answers. So one walk outward
// with one hash suffices for a chain.
//
// A foreign list answers for itself and for whatever it knows of its ancestors. If that is nothing,
// the walk goes on from the parent that it names.

#include <import/list/foreign_results.hpp>
#include <import/list/import_list.hpp>

#include <memory>
#include <utility>
#include <vector>

namespace lf::import {

namespace {

using Share = std::shared_ptr<IImportList const>;

FoundImportEntry found(PackageImportEntry const& entry, EntryOrigin origin) {
    return {entry, origin};
}

FoundFullyQualifiedName found(FullyQualifiedImportEntry const& entry, EntryOrigin origin) {
    return {entry.getRawArgument(), origin};
}

FoundImportEntry fromAncestor(FoundImportEntry const& answer) {
    return {answer.entry, EntryOrigin::Ancestor};
}

FoundFullyQualifiedName fromAncestor(FoundFullyQualifiedName const& answer) {
    return {answer.rawArgument, EntryOrigin::Ancestor};
}

template <typename Found, auto findOwn>
std::optional<Found> findInChain(ImportList const* first, NameKey const& name) noexcept {
    for (ImportList const& list : ListChain(first)) {
        if (auto const* const entry = (list.*findOwn)(name)) {
            return found(*entry, EntryOrigin::Ancestor);
        }
    }
    return std::nullopt;
}

// \p resultFrom says what a walk from a list found, where that is known.
template <typename Found, auto findOwn, auto ask, typename ResultFrom>
std::optional<Found> walkOutward(Share const* foreign, NameKey const& name, ResultFrom resultFrom) {
    Share held;
    while (*foreign != nullptr) {
        if (std::optional<Found> const* const known = resultFrom(*foreign)) {
            return *known;
        }
        if (auto const answer =
                ((**foreign).*ask)(name.text, IImportList::CheckAncestorList::Yes)) {
            return fromAncestor(*answer);
        }
        held = (*foreign)->getParent();
        ImportList const* const list = asImportList(held.get());
        if (auto const answer = findInChain<Found, findOwn>(list, name)) {
            return answer;
        }
        foreign = list != nullptr ? &list->foreignAncestor() : &held;
    }
    return std::nullopt;
}

// A function of its own, so that a lookup without foreign lists has none of its state.
template <typename Found, auto findOwn, auto ask>
[[gnu::noinline]] std::optional<Found> findBeyond(Share const& foreign, NameKey const& name) {
    if (ForeignResults* const results = ForeignResults::ofOuterLookup()) {
        std::vector<Share> passed;
        auto const result =
            walkOutward<Found, findOwn, ask>(&foreign, name, [&](Share const& list) {
                auto const* const known = results->find<Found>(*list, name.text);
                if (known == nullptr) {
                    passed.push_back(list);
                }
                return known;
            });
        results->keep(std::move(passed), name.text, result);
        return result;
    }
    ForeignResults results;
    return walkOutward<Found, findOwn, ask>(
        &foreign, name, [&](Share const& list) { return results.find<Found>(*list, name.text); });
}

template <typename Found, auto findOwn, auto findHiding, auto ask>
std::optional<Found> lookUp(ImportList const& asked, NameKey const& name,
                            IImportList::CheckAncestorList check) {
    if (auto const* const entry = (asked.*findOwn)(name)) {
        return found(*entry, EntryOrigin::ThisList);
    }
    if (check != IImportList::CheckAncestorList::Yes || (asked.*findHiding)(name) != nullptr) {
        return std::nullopt;
    }
    if (auto const answer = findInChain<Found, findOwn>(asked.enclosingList(), name)) {
        return answer;
    }
    Share const& foreign = asked.foreignAncestor();
    return foreign == nullptr ? std::nullopt : findBeyond<Found, findOwn, ask>(foreign, name);
}

} // namespace

PackageImportEntry const* ImportList::probePackages(NameKey const& name) const noexcept {
    auto const position = packageIndexByName.find(name.hash, [&](EntryPosition candidate) {
        return packageEntries[candidate.position()].entry.getIntroducedName() == name.text;
    });
    return position ? &packageEntries[position.position()].entry : nullptr;
}

FullyQualifiedImportEntry const*
ImportList::probeFullyQualified(NameKey const& name) const noexcept {
    auto const position = fullyQualifiedIndexByName.find(name.hash, [&](EntryPosition candidate) {
        return fullyQualifiedEntries[candidate.position()].entry.getIntroducedName() == name.text;
    });
    return position ? &fullyQualifiedEntries[position.position()].entry : nullptr;
}

bool ImportList::probeRawArguments(NameKey const& rawArgument) const noexcept {
    return bool(rawArguments.find(rawArgument.hash, [&](EntryPosition candidate) {
        return visitDotted(candidate, [&](auto const& entry) {
            return entry.getRawArgument() == rawArgument.text;
        });
    }));
}

bool ImportList::probeRootElements(NameKey const& rootElement) const noexcept {
    return bool(rootElements.find(rootElement.hash, [&](EntryPosition candidate) {
        return visitDotted(candidate, [&](auto const& entry) {
            return entry.getRootElement() == rootElement.text;
        });
    }));
}

std::optional<FoundImportEntry> ImportList::findPackage(NameKey const& name,
                                                        CheckAncestorList check) const {
    return lookUp<FoundImportEntry, &ImportList::findOwnPackage, &ImportList::findOwnFullyQualified,
                  &IImportList::findPackageImportEntry>(*this, name, check);
}

std::optional<FoundImportEntry> ImportList::findPackageImportEntry(std::u16string_view name,
                                                                   CheckAncestorList check) const {
    return findPackage(NameKey(name, key), check);
}

std::optional<FoundFullyQualifiedName>
ImportList::findFullyQualifiedImportEntry(std::u16string_view name, CheckAncestorList check) const {
    return lookUp<FoundFullyQualifiedName, &ImportList::findOwnFullyQualified,
                  &ImportList::findOwnPackage, &IImportList::findFullyQualifiedImportEntry>(
        *this, NameKey(name, key), check);
}

} // namespace lf::import
