// SPDX-License-Identifier: BSL-1.0
#include "workload.hpp"

#include <support/make_entries.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace workload {

namespace {

std::u16string drawFullyQualified(NameSource& names, Draws& draws,
                                  std::vector<std::u16string> const& roots) {
    std::u16string text = draws.oneOf(roots);
    text += u'.';
    text += drawWord(draws);
    text += u'.';
    text += names.next();
    return text;
}

using Kind = std::vector<std::u16string> Imports::*;

void repeatOne(Scopes const& enclosing, Draws& draws, Kind kind, std::u16string& import,
               std::vector<std::u16string> const& own) {
    std::u16string const& repeated = draws.oneOf(draws.oneOf(enclosing).*kind);
    if (std::ranges::find(own, repeated) == own.end()) {
        import = repeated;
    }
}

// Repeats each import of \p scope with a probability of one in eight.
void repeatSome(Scopes const& enclosing, Draws& draws, Imports& scope) {
    for (Kind const kind : {&Imports::packages, &Imports::fullyQualified}) {
        for (std::u16string& import : scope.*kind) {
            if (draws.below(8) == 0) {
                repeatOne(enclosing, draws, kind, import, scope.*kind);
            }
        }
    }
}

Keys drawMisses(NameSource& names, Draws& draws) {
    std::vector<std::u16string> const absent = names.take(numberOfKeys);
    Keys keys;
    for (std::size_t i = 0; i < numberOfKeys; ++i) {
        keys.names.push_back(draws.oneOf(absent));
        keys.answers.emplace_back();
    }
    return keys;
}

Keys drawHits(Scopes const& scopes, Draws& draws, Kind kind) {
    Keys keys;
    if ((scopes.back().*kind).empty()) {
        return keys;
    }
    for (std::size_t i = 0; i < numberOfKeys; ++i) {
        std::size_t const level = draws.below(scopes.size());
        std::u16string const& import = draws.oneOf(scopes[level].*kind);
        keys.names.push_back(introducedName(import));
        keys.answers.emplace_back(Answer{import, level + 1 == scopes.size()
                                                     ? lf::import::EntryOrigin::ThisList
                                                     : lf::import::EntryOrigin::Ancestor});
    }
    return keys;
}

void add(lf::import::IImportList& list, lf::import::ImportEntry&& entry) {
    if (list.addStaticImportEntry(std::move(entry))) {
        throw std::logic_error("an import of the workload is refused");
    }
}

} // namespace

Scopes makeScopes(NameSource& names, Draws& draws, std::size_t depth, std::size_t importsPerScope,
                  Repetition repetition) {
    std::vector<std::u16string> const roots = names.take(16);
    Scopes scopes;
    for (std::size_t level = 0; level < depth; ++level) {
        Imports scope;
        scope.packages = names.take(importsPerScope / 2);
        scope.fullyQualified.resize(importsPerScope - scope.packages.size());
        std::ranges::generate(scope.fullyQualified,
                              [&] { return drawFullyQualified(names, draws, roots); });
        if (repetition == Repetition::Natural && !scopes.empty()) {
            repeatSome(scopes, draws, scope);
        }
        scopes.push_back(std::move(scope));
    }
    return scopes;
}

std::u16string introducedName(std::u16string const& rawArgument) {
    return rawArgument.substr(rawArgument.rfind(u'.') + 1);
}

LookupWorkload makeLookupWorkload(std::size_t depth, std::size_t importsPerScope, NameShape shape) {
    Draws draws;
    NameSource names(draws, shape);
    LookupWorkload workload;
    workload.scopes = makeScopes(names, draws, depth, importsPerScope, Repetition::None);
    workload.misses = drawMisses(names, draws);
    workload.packageHits = drawHits(workload.scopes, draws, &Imports::packages);
    workload.fullyQualifiedHits = drawHits(workload.scopes, draws, &Imports::fullyQualified);
    return workload;
}

ImportLists::ImportLists(Scopes const& scopes) {
    for (Imports const& scope : scopes) {
        std::unique_ptr<lf::import::IImportList> next = lf::import::createImportList(list);
        for (std::u16string const& package : scope.packages) {
            add(*next, support::makePackage(package));
        }
        for (std::u16string const& name : scope.fullyQualified) {
            add(*next, support::makeName(name));
        }
        list = std::move(next);
    }
}

} // namespace workload
