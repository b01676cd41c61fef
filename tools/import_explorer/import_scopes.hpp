// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The scopes of a script with their import lists.

#include <import_explorer/analysis.hpp>
#include <import_explorer/script_reader.hpp>

#include <host/scope.hpp>

#include <memory>
#include <span>
#include <vector>

namespace explorer {

using ImportScope = lf::import::host::Scope<EntryReference>;

/// Indexed by ScopeIndex; null for a scope that is nested too deeply.
using ImportScopes = std::vector<std::shared_ptr<ImportScope>>;

/// Creates an empty ImportScope for each scope. Its parent is that of the nearest enclosing scope
/// with imports, according to \p statements.
ImportScopes makeImportScopes(std::span<AnalysedScope const> scopes,
                              std::span<Statement const> statements);

} // namespace explorer
