// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The entries of enclosing scopes that each scope sees or hides.

#include <import_explorer/analysis.hpp>
#include <import_explorer/import_scopes.hpp>

namespace explorer {

/// Sets the views of the scopes of \p file from \p importScopes as of the end of the file.
void viewScopes(AnalysedFile& file, ImportScopes const& importScopes);

} // namespace explorer
