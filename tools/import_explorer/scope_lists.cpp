// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/scope_lists.hpp>

#include <import_explorer/utf8.hpp>

#include <utility>
#include <variant>

namespace explorer {

namespace {

using lf::import::IImportList;
using lf::import::ImportEntry;
using Check = IImportList::CheckAncestorList;

std::vector<bool> findImporters(std::size_t numberOfScopes, std::span<Statement const> statements) {
    std::vector<bool> imports(numberOfScopes, false);
    for (Statement const& statement : statements) {
        if (auto const* command = std::get_if<ImportCommand>(&statement)) {
            imports[command->scope] = true;
        }
    }
    return imports;
}

std::optional<EntryReference> entryOf(std::optional<Origin> const& origin) {
    return origin ? std::optional(origin->entry) : std::nullopt;
}

} // namespace

ScopeLists::ScopeLists(std::span<AnalysedScope const> scopes, std::span<Statement const> statements)
    : origins(scopes) {
    std::vector<bool> const imports = findImporters(scopes.size(), statements);

    /// The nearest list of a scope with imports, with the number of such lists.
    struct Chain {
        std::shared_ptr<IImportList const> list;
        std::size_t length = 0;
    };

    std::vector<Chain> chains;
    chains.reserve(scopes.size());
    lists.reserve(scopes.size());
    for (ScopeIndex scope = 0; scope < scopes.size(); ++scope) {
        std::optional<ScopeIndex> const parent = scopes[scope].scope.parent;
        Chain const outer = parent ? chains[*parent] : Chain();
        if (outer.length > deepestListedLevel) {
            lists.emplace_back();
            chains.push_back(outer);
            continue;
        }
        lists.push_back(lf::import::createImportList(outer.list));
        chains.push_back(imports[scope] ? Chain{lists.back(), outer.length + 1} : outer);
    }
}

void ScopeLists::enter(ScopeIndex scope) {
    current = scope;
    origins.enter(scope);
}

Addition ScopeLists::add(ImportEntry&& entry, bool isDynamic, AnalysedEntry const& described,
                         EntryReference reference) {
    IImportList& list = *lists.at(current);
    std::size_t const sizeBefore = list.getNumberOfEntries(Check::No);
    auto refusal = isDynamic ? list.addDynamicImportEntry(std::move(entry))
                             : list.addStaticImportEntry(std::move(entry));
    if (refusal) {
        return {EntryOutcome::Refused, findConflict(described), std::move(refusal)};
    }
    if (list.getNumberOfEntries(Check::No) == sizeBefore) {
        return {EntryOutcome::Repeated, entryOf(origins.findDotted(described.text)), std::nullopt};
    }
    origins.add(described, reference);
    return {EntryOutcome::Added, std::nullopt, std::nullopt};
}

std::optional<EntryReference> ScopeLists::findConflict(AnalysedEntry const& refused) const {
    if (refused.introducedName) {
        if (auto const package = origins.own(origins.findPackage(*refused.introducedName))) {
            return package;
        }
    }
    if (refused.kind != EntryKind::Package) {
        return entryOf(origins.findPackage(*refused.rootElement));
    }
    auto const name = origins.own(origins.findName(*refused.introducedName));
    return name ? name : origins.own(origins.findRoot(*refused.introducedName));
}

std::vector<EntryReference> ScopeLists::find(std::string_view name) const {
    IImportList const& list = *lists.at(current);
    std::u16string const key = toUtf16(name);
    std::vector<Origin> found;
    if (list.findPackageImportEntry(key, Check::Yes)) {
        found.push_back(origins.findPackage(name).value());
    }
    if (list.findFullyQualifiedImportEntry(key, Check::Yes)) {
        found.push_back(origins.findName(name).value());
    }
    // Both are in scopes around this one, of which the inner one stands behind the outer one.
    if (found.size() == 2 && found[0].scope < found[1].scope) {
        std::swap(found[0], found[1]);
    }
    std::vector<EntryReference> result;
    result.reserve(found.size());
    for (Origin const& origin : found) {
        result.push_back(origin.entry);
    }
    return result;
}

std::span<EntryReference const> ScopeLists::reachedWildcards() {
    origins.leaveAll();
    return origins.reachedWildcards();
}

} // namespace explorer
