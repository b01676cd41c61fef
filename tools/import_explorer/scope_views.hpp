// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What the scopes of a file see of each other.

#include <import_explorer/analysis.hpp>
#include <import_explorer/scope_lists.hpp>

namespace explorer {

/// Gives the scopes of \p file their views, by what \p lists hold at the end of the file.
void viewScopes(AnalysedFile& file, ScopeLists const& lists);

} // namespace explorer
