// SPDX-License-Identifier: BSL-1.0
#include "twin_scopes.hpp"

#include <support/foreign_import_list.hpp>
#include <support/observed_entries.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>
#include <utility>
#include <variant>

namespace support {

using lf::import::IImportList;
using lf::import::host::ImportKind;
using lf::import::host::Overloaded;
using lf::import::host::Resolution;
using model::Outcome;
using model::OutcomeKind;
using model::thisListOnly;
using model::withAncestors;

namespace {

constexpr std::array kinds{std::pair(ImportKind::Package, OutcomeKind::Package),
                           std::pair(ImportKind::FullyQualified, OutcomeKind::FullyQualified),
                           std::pair(ImportKind::Wildcard, OutcomeKind::Wildcard)};

Outcome describeEntry(lf::import::ImportEntry const& entry) {
    return std::visit([](auto const& held) { return describe(held); }, entry);
}

template <typename What>
void require(bool isAsExpected, std::size_t scope, What const& what) {
    if (!isAsExpected) {
        std::ostringstream text;
        text << "scope " << scope << " and model differ in " << what;
        throw Difference(text.str());
    }
}

std::unique_ptr<IImportList> makeList(ListMake const& make,
                                      std::shared_ptr<IImportList const> parent) {
    switch (make.maker) {
    case Maker::Library:
        break;
    case Maker::Delegating:
        return std::make_unique<DelegatingImportList>(
            lf::import::createImportList(std::move(parent)));
    case Maker::Foreign:
        return std::make_unique<ForeignImportList>(std::move(parent), make.manners);
    }
    return lf::import::createImportList(std::move(parent));
}

} // namespace

void TwinScopes::create(ListMake const& make, std::optional<std::size_t> parent) {
    Twin twin{make, parent, nullptr, nullptr};
    std::shared_ptr<Scope const> const scope = parent ? twins.at(*parent).scope : nullptr;
    std::shared_ptr<model::List const> const list = parent ? twins.at(*parent).model : nullptr;
    twin.scope =
        make == ListMake{}
            ? std::make_shared<Scope>(scope)
            : std::make_shared<Scope>(scope, makeList(make, scope ? scope->getList() : nullptr));
    twin.model = make.maker == Maker::Foreign ? model::createForeignList(list, make.manners)
                                              : model::createList(list);
    twins.push_back(std::move(twin));
}

std::string TwinScopes::add(std::size_t number, Addition addition, Outcome const& entry) {
    Twin& twin = twins.at(number);
    std::size_t const sizeBefore = twin.model->numberOfEntries(thisListOnly);
    auto const refusal =
        addition == Addition::Static ? twin.model->addStatic(entry) : twin.model->addDynamic(entry);
    bool const isStored = twin.model->numberOfEntries(thisListOnly) > sizeBefore;
    Place const place{number, numberOfAdditions++};
    auto const result = addition == Addition::Static
                            ? twin.scope->addStatic(makeEntry(entry), place)
                            : twin.scope->addDynamic(makeEntry(entry), place);
    return std::visit(
        Overloaded{[&](Scope::Stored const& stored) -> std::string {
                       require(isStored && stored.imported->place == place, number, "storing");
                       return "stored";
                   },
                   [&](Scope::Repeated const& repeated) -> std::string {
                       require(!isStored && !refusal, number, "skipping");
                       require(describeEntry(repeated.earlier->entry).rawArgument ==
                                   entry.rawArgument,
                               number, "what is repeated");
                       return "repeated";
                   },
                   [&](Scope::Refused const& refused) {
                       Outcome const message =
                           describe(lf::import::InvalidImportEntry(refused.message.getMsgID()));
                       require(refusal == message, number, "refusing");
                       require(refused.conflict == expectedConflict(number, entry, message), number,
                               "the conflict");
                       return message.key;
                   }},
        result);
}

/// The import that, according to the rules of adding, conflicts with \p entry.
std::optional<TwinScopes::Scope::ScopedImport>
TwinScopes::expectedConflict(std::size_t number, Outcome const& entry,
                             Outcome const& refusal) const {
    model::List const& list = *twins.at(number).model;
    if (entry.kind != OutcomeKind::Package && refusal.key == "InvalidPackageFunctionAbbreviation") {
        return importOf(number, list.findPackage(entry.rootElement, withAncestors)->entry);
    }
    if (refusal.key != "InvalidPackageFunctionAbbreviation") {
        auto const package = list.findPackage(entry.introducedName, thisListOnly);
        auto const name = list.findFullyQualified(entry.introducedName, thisListOnly);
        return importOf(number, package ? package->entry : name->entry);
    }
    // The first dotted import with that root, in order of addition.
    for (Import const& imported : twins.at(number).scope->imports()) {
        Outcome const candidate = describeEntry(imported.entry);
        if (candidate.kind != OutcomeKind::Package &&
            candidate.rootElement == entry.introducedName) {
            return Scope::ScopedImport{&imported, 0};
        }
    }
    return std::nullopt;
}

void TwinScopes::checkScopes() {
    importsByEntry.clear();
    for (std::size_t number = 0; number < twins.size(); ++number) {
        checkOwnImports(number);
    }
    for (std::size_t number = 0; number < twins.size(); ++number) {
        checkVisible(number);
        checkHidden(number);
    }
}

void TwinScopes::checkOwnImports(std::size_t number) {
    Twin const& twin = twins.at(number);
    auto const& imports = twin.scope->imports();
    require(std::ranges::is_sorted(imports, {},
                                   [](Import const& imported) { return imported.place.addition; }),
            number, "the order of its imports");
    std::size_t count = 0;
    for (auto const& [kind, modelKind] : kinds) {
        auto imported = imports.begin();
        for (Outcome const* const entry : twin.model->entries(modelKind, thisListOnly)) {
            imported = std::ranges::find(imported, imports.end(), kind, &Import::kind);
            require(imported != imports.end() && describeEntry(imported->entry) == *entry, number,
                    "its imports");
            importsByEntry[entry] = &*imported++;
            ++count;
        }
    }
    require(imports.size() == count, number, "the number of its imports");
}

void TwinScopes::checkVisible(std::size_t number) const {
    for (auto const& [kind, modelKind] : kinds) {
        Imports expected = expectedVisible(number, modelKind);
        require(twins.at(number).scope->visible(kind) == expected, number, "what is visible");
        for (std::size_t const most : {std::size_t{2}, std::size_t{1}, std::size_t{0}}) {
            expected.resize(std::min(expected.size(), most));
            require(twins.at(number).scope->visible(kind, most) == expected, number,
                    "the first that are visible");
        }
    }
}

void TwinScopes::checkHidden(std::size_t number) const {
    Twin const& twin = twins.at(number);
    std::vector<Scope::HiddenImport> const actual = twin.scope->hidden();
    auto next = actual.begin();
    for (auto const& [kind, modelKind] : kinds) {
        if (!twin.parent) {
            break;
        }
        Imports const seen = expectedVisible(number, modelKind);
        for (Outcome const* const entry :
             twins.at(*twin.parent).model->entries(modelKind, withAncestors)) {
            Scope::ScopedImport const imported = importOf(number, entry);
            if (std::ranges::find(seen, imported) != seen.end()) {
                continue;
            }
            require(next != actual.end() && next->hidden == imported, number, "what is hidden");
            require(twin.make.maker == Maker::Foreign || next->by == expectedHider(twin, *entry),
                    number, "what hides it");
            ++next;
        }
    }
    require(next == actual.end(), number, "the number of what is hidden");
}

TwinScopes::Import const* TwinScopes::expectedHider(Twin const& twin, Outcome const& hidden) const {
    if (hidden.kind != OutcomeKind::Wildcard) {
        if (auto const found = twin.model->findPackage(hidden.introducedName, thisListOnly)) {
            return importsByEntry.at(found->entry);
        }
    }
    if (hidden.kind == OutcomeKind::Package) {
        return importsByEntry.at(
            twin.model->findFullyQualified(hidden.introducedName, thisListOnly)->entry);
    }
    auto const& imports = twin.scope->imports();
    auto const same = std::ranges::find_if(imports, [&](Import const& imported) {
        Outcome const candidate = describeEntry(imported.entry);
        return candidate.kind != OutcomeKind::Package &&
               candidate.rawArgument == hidden.rawArgument;
    });
    return same == imports.end() ? nullptr : &*same;
}

void TwinScopes::checkName(std::u16string const& name) const {
    for (std::size_t number = 0; number < twins.size(); ++number) {
        Scope const& scope = *twins.at(number).scope;
        require(scope.find(name) == expectedImports(number, name), number,
                "the imports of " + model::quoted(name));

        // Every prefix, the longest first, until an import introduces one.
        std::u16string part = name;
        Imports expected = expectedImports(number, part);
        while (expected.empty() && part.find(u'.') != std::u16string::npos) {
            part.erase(part.rfind(u'.'));
            expected = expectedImports(number, part);
        }
        bool const isKnown = !expected.empty();
        Resolution<Place> const resolution = scope.resolve(name);
        require(resolution.imports == expected, number, "what uses " + model::quoted(name));
        require(resolution.wildcards ==
                    (isKnown ? Imports() : expectedVisible(number, OutcomeKind::Wildcard)),
                number, "what may supply " + model::quoted(name));
        auto const dots = static_cast<std::size_t>(std::ranges::count(part, u'.'));
        require(resolution.numberOfSegments == (isKnown ? dots + 1 : 1), number,
                "the segments of " + model::quoted(name));
    }
}

TwinScopes::Imports TwinScopes::expectedImports(std::size_t number,
                                                std::u16string const& name) const {
    Imports result;
    if (auto const package = twins.at(number).model->findPackage(name, withAncestors)) {
        result.push_back(importOf(number, package->entry));
    }
    if (auto const found = twins.at(number).model->findFullyQualified(name, withAncestors)) {
        result.push_back(importOf(number, found->entry));
    }
    std::ranges::stable_sort(result, {}, &Scope::ScopedImport::distance);
    return result;
}

TwinScopes::Imports TwinScopes::expectedVisible(std::size_t number, OutcomeKind kind) const {
    Imports result;
    for (Outcome const* const entry : twins.at(number).model->entries(kind, withAncestors)) {
        result.push_back(importOf(number, entry));
    }
    return result;
}

TwinScopes::Scope::ScopedImport TwinScopes::importOf(std::size_t asking,
                                                     Outcome const* entry) const {
    auto const found = importsByEntry.find(entry);
    require(found != importsByEntry.end(), asking, "an entry that nobody stores");
    std::size_t distance = 0;
    for (std::size_t number = asking; number != found->second->place.scope; ++distance) {
        number = twins.at(number).parent.value();
    }
    return {found->second, distance};
}

} // namespace support
