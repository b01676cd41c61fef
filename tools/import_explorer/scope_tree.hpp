// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Draws the scopes of a file as a tree.

#include <import_explorer/analysis.hpp>
#include <import_explorer/style.hpp>
#include <import_explorer/text_sink.hpp>

#include <string>

namespace explorer {

/// `line 7, scope drawing`, `line 2, file`: where an entry was imported.
std::string placeOf(AnalysedFile const& file, EntryReference const& reference);

/// Each scope with what it imports, what it sees of the scopes around it, and what it hides of
/// that. Levels too deep to have a view are all drawn at the same indentation, with their number.
void drawScopes(AnalysedFile const& file, Style style, ITextSink& sink);

} // namespace explorer
