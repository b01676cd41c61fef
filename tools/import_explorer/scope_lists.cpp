// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/scope_lists.hpp>

#include <range/v3/iterator/operations.hpp>
#include <range/v3/range/operations.hpp>

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>
#include <variant>

namespace explorer {

namespace {

using lf::import::FullyQualifiedImportEntry;
using lf::import::IImportList;
using lf::import::ImportEntry;
using lf::import::PackageImportEntry;
using lf::import::WildcardImportEntry;
using Check = IImportList::CheckAncestorList;

template <typename Entry>
constexpr bool isPackage = std::is_same_v<Entry, PackageImportEntry>;

/// What no two entries of a kind have in common in one list.
template <typename Entry>
std::u16string_view keyOf(Entry const& entry) noexcept {
    if constexpr (isPackage<Entry>) {
        return entry.getIntroducedName();
    } else {
        return entry.getRawArgument();
    }
}

template <typename Entry>
auto entriesOf(IImportList const& list, Check check) {
    if constexpr (isPackage<Entry>) {
        return list.getPackageImportEntries(check);
    } else if constexpr (std::is_same_v<Entry, FullyQualifiedImportEntry>) {
        return list.getFullyQualifiedImportEntries(check);
    } else {
        return list.getWildcardImportEntries(check);
    }
}

template <typename References>
std::optional<EntryReference> lookUp(References const& references, std::u16string_view key) {
    auto const found = references.find(std::u16string(key));
    return found == references.end() ? std::nullopt : std::optional(found->second);
}

} // namespace

/// Finds where entries come from that a list names, one after the other and outward. Each comes
/// from the first scope that has its like: it would be hidden otherwise.
class ScopeLists::OutwardSearch {
  public:
    OutwardSearch(ScopeLists const& scopeLists, ScopeIndex start)
        : records(scopeLists.records), scope(start) {}

    template <typename Entry>
    EntryReference find(Entry const& entry) {
        return find(isPackage<Entry> ? &ScopeRecord::packagesByName : &ScopeRecord::dottedByText,
                    keyOf(entry));
    }

    EntryReference find(References ScopeRecord::*references, std::u16string_view key) {
        while (true) {
            ScopeRecord const& record = records.at(scope);
            if (std::optional<EntryReference> const found = lookUp(record.*references, key)) {
                return *found;
            }
            scope = record.parent.value();
        }
    }

    /// Where the last one was found.
    ScopeIndex currentScope() const noexcept { return scope; }

  private:
    std::vector<ScopeRecord> const& records;
    ScopeIndex scope;
};

ScopeLists::ScopeLists(std::vector<Scope> const& scopes) {
    records.reserve(scopes.size());
    for (Scope const& scope : scopes) {
        std::shared_ptr<IImportList const> parent;
        if (scope.parent) {
            parent = records.at(*scope.parent).list;
        }
        records.push_back(
            {scope.parent, lf::import::createImportList(std::move(parent)), {}, {}, {}});
    }
}

Addition ScopeLists::add(ScopeIndex scope, ImportEntry&& entry, bool isDynamic,
                         EntryReference reference) {
    ScopeRecord& record = records.at(scope);
    IImportList& list = *record.list;
    // An accepted entry may have been moved from.
    ImportEntry const original = entry;
    std::size_t const sizeBefore = list.getNumberOfEntries(Check::No);
    auto refusal = isDynamic ? list.addDynamicImportEntry(std::move(entry))
                             : list.addStaticImportEntry(std::move(entry));
    if (refusal) {
        return {EntryOutcome::Refused, findConflict(scope, original), std::move(refusal)};
    }
    if (list.getNumberOfEntries(Check::No) == sizeBefore) {
        return {
            EntryOutcome::Repeated,
            std::visit([&](auto const& same) { return lookUp(record.dottedByText, keyOf(same)); },
                       original),
            std::nullopt};
    }
    remember(record, original, reference);
    return {EntryOutcome::Added, std::nullopt, std::nullopt};
}

void ScopeLists::remember(ScopeRecord& record, ImportEntry const& entry, EntryReference reference) {
    auto const rememberEntry = [&]<typename Entry>(Entry const& added) {
        if constexpr (isPackage<Entry>) {
            record.packagesByName.emplace(keyOf(added), reference);
        } else {
            record.dottedByText.emplace(keyOf(added), reference);
            record.dottedByRoot.emplace(added.getRootElement(), reference);
        }
    };
    std::visit(rememberEntry, entry);
}

std::optional<EntryReference> ScopeLists::findConflict(ScopeIndex scope,
                                                       ImportEntry const& entry) const {
    ScopeRecord const& record = records.at(scope);
    if (auto const* package = std::get_if<PackageImportEntry>(&entry)) {
        std::u16string_view const name = package->getIntroducedName();
        auto const own = findOwn(record, name);
        return own ? own : lookUp(record.dottedByRoot, name);
    }
    if (auto const* name = std::get_if<FullyQualifiedImportEntry>(&entry)) {
        auto const own = lookUp(record.packagesByName, name->getIntroducedName());
        return own ? own : findPackage(scope, name->getRootElement());
    }
    return findPackage(scope, std::get<WildcardImportEntry>(entry).getRootElement());
}

std::optional<EntryReference> ScopeLists::findOwn(ScopeRecord const& record,
                                                  std::u16string_view name) {
    if (auto const package = lookUp(record.packagesByName, name)) {
        return package;
    }
    auto const found = record.list->findFullyQualifiedImportEntry(name, Check::No);
    return found ? lookUp(record.dottedByText, found->rawArgument) : std::nullopt;
}

std::optional<EntryReference> ScopeLists::findPackage(ScopeIndex scope,
                                                      std::u16string_view name) const {
    auto const found = records.at(scope).list->findPackageImportEntry(name, Check::Yes);
    return found ? std::optional(OutwardSearch(*this, scope).find(found->entry)) : std::nullopt;
}

std::vector<EntryReference> ScopeLists::find(ScopeIndex scope, std::u16string_view name) const {
    std::vector<std::pair<ScopeIndex, EntryReference>> found;
    IImportList const& list = *records.at(scope).list;
    OutwardSearch packageSearch(*this, scope);
    if (auto const package = list.findPackageImportEntry(name, Check::Yes)) {
        EntryReference const reference = packageSearch.find(package->entry);
        found.emplace_back(packageSearch.currentScope(), reference);
    }
    OutwardSearch nameSearch(*this, scope);
    if (auto const dotted = list.findFullyQualifiedImportEntry(name, Check::Yes)) {
        EntryReference const reference =
            nameSearch.find(&ScopeRecord::dottedByText, dotted->rawArgument);
        found.emplace_back(nameSearch.currentScope(), reference);
    }
    std::vector<EntryReference> result;
    for (auto const& [foundIn, reference] : found) {
        // Both are in scopes around this one, of which the inner one stands behind the outer one.
        bool const isNearest = foundIn > found.front().first;
        result.insert(isNearest ? result.begin() : result.end(), reference);
    }
    return result;
}

std::vector<EntryReference> ScopeLists::visibleWildcards(ScopeIndex scope) const {
    std::vector<EntryReference> result;
    OutwardSearch search(*this, scope);
    for (WildcardImportEntry const& entry :
         entriesOf<WildcardImportEntry>(*records.at(scope).list, Check::Yes)) {
        result.push_back(search.find(entry));
    }
    return result;
}

std::vector<VisibleName> ScopeLists::visibleNames(ScopeIndex scope, std::size_t limit) const {
    std::vector<VisibleName> names;
    auto const addNames = [&](auto&& entries) {
        OutwardSearch search(*this, scope);
        for (auto const& entry : entries) {
            if (names.size() == limit) {
                return;
            }
            names.push_back({entry.getIntroducedName(), search.find(entry)});
        }
    };
    IImportList const& list = *records.at(scope).list;
    addNames(entriesOf<PackageImportEntry>(list, Check::Yes));
    addNames(entriesOf<FullyQualifiedImportEntry>(list, Check::Yes));
    return names;
}

ScopeView ScopeLists::view(ScopeIndex scope) const {
    ScopeView view;
    if (records.at(scope).parent) {
        compareViews<PackageImportEntry>(scope, view);
        compareViews<FullyQualifiedImportEntry>(scope, view);
        compareViews<WildcardImportEntry>(scope, view);
    }
    return view;
}

/// What a scope sees is its own entries and, behind them, what its parent sees, in the same order,
/// but for what it hides.
template <typename Entry>
void ScopeLists::compareViews(ScopeIndex scope, ScopeView& view) const {
    ScopeRecord const& record = records.at(scope);
    ScopeRecord const& parent = records.at(record.parent.value());
    auto visible = entriesOf<Entry>(*record.list, Check::Yes);
    auto inherited =
        ranges::next(visible.begin(), ranges::distance(entriesOf<Entry>(*record.list, Check::No)),
                     visible.end());
    OutwardSearch search(*this, *record.parent);
    for (Entry const& entry : entriesOf<Entry>(*parent.list, Check::Yes)) {
        EntryReference const reference = search.find(entry);
        if (inherited != visible.end() && &*inherited == &entry) {
            view.inherited.add(reference);
            ++inherited;
            continue;
        }
        std::optional<EntryReference> by;
        if constexpr (isPackage<Entry>) {
            by = findOwn(record, entry.getIntroducedName());
        } else {
            by = lookUp(record.dottedByText, entry.getRawArgument());
            if constexpr (std::is_same_v<Entry, FullyQualifiedImportEntry>) {
                by = by ? by : lookUp(record.packagesByName, entry.getIntroducedName());
            }
        }
        view.hidden.add({reference, by.value()});
    }
}

} // namespace explorer
