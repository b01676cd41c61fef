// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Finds the fixes of diagnostics.
///
/// A fix does not change the meaning of anything else: every other import is accepted or refused as
/// before, and every use reaches the same imports.

#include <import_explorer/analysis.hpp>
#include <import_explorer/diagnostic.hpp>

#include <string_view>

namespace explorer {

/// Adds to each diagnostic of \p file its fix, if it has one:
///
/// - A repeated import is removed, including a second import of the same package.
/// - An unused import is removed unless that could change the meaning of the rest: in a malformed
///   script, if a refused import, a suggestion or a repetition refers to it or to its names, or if
///   it hides a package that a dotted import starts with.
/// - Another package of the same name gets an alias that does not occur in the file.
void proposeFixes(AnalysedFile& file);

/// The description of \p fix, with the placeholder `{1}` for the alias.
std::string_view wordsFor(Fix const& fix) noexcept;

} // namespace explorer
