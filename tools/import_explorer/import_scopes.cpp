// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/import_scopes.hpp>

#include <cstddef>
#include <optional>
#include <utility>
#include <variant>

namespace explorer {

namespace {

std::vector<bool> findImporters(std::size_t numberOfScopes, std::span<Statement const> statements) {
    std::vector<bool> imports(numberOfScopes, false);
    for (Statement const& statement : statements) {
        if (auto const* command = std::get_if<ImportCommand>(&statement)) {
            imports[command->scope] = true;
        }
    }
    return imports;
}

/// The nearest scope with imports, and the number of scopes with imports from there outward.
struct Chain {
    std::shared_ptr<ImportScope const> innermost;
    std::size_t length = 0;
};

} // namespace

ImportScopes makeImportScopes(std::span<AnalysedScope const> scopes,
                              std::span<Statement const> statements) {
    std::vector<bool> const imports = findImporters(scopes.size(), statements);
    std::vector<Chain> chains;
    chains.reserve(scopes.size());
    ImportScopes made;
    made.reserve(scopes.size());
    for (ScopeIndex scope = 0; scope < scopes.size(); ++scope) {
        std::optional<ScopeIndex> const parent = scopes[scope].scope.parent;
        Chain const outer = parent ? chains[*parent] : Chain();
        if (outer.length > deepestListedLevel) {
            made.emplace_back();
            chains.push_back(outer);
            continue;
        }
        made.push_back(std::make_shared<ImportScope>(outer.innermost));
        chains.push_back(imports[scope] ? Chain{made.back(), outer.length + 1} : outer);
    }
    return made;
}

} // namespace explorer
