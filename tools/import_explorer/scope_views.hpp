// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What the scopes of a file see of each other.

#include <import_explorer/analysis.hpp>
#include <import_explorer/import_scopes.hpp>

namespace explorer {

/// Gives the scopes of \p file their views, by what \p importScopes hold at the end of the file.
void viewScopes(AnalysedFile& file, ImportScopes const& importScopes);

} // namespace explorer
