// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Draws the scopes of a file as a tree.

#include <import_explorer/analysis.hpp>
#include <import_explorer/style.hpp>
#include <import_explorer/text_sink.hpp>

#include <string>

namespace explorer {

/// `line 7, scope drawing` or `line 2, file`: where an entry was imported.
std::string placeOf(AnalysedFile const& file, EntryReference const& reference);

/// Draws each scope with the entries that it imports, inherits and hides. Levels too deep for a
/// view share one indentation and show their number.
void drawScopes(AnalysedFile const& file, Style style, ITextSink& sink);

} // namespace explorer
