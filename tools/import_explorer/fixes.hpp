// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Finds the fixes of diagnostics and applies them to the text of a file.
///
/// A fix leaves everything else with its meaning: every other import is accepted or refused as
/// before, and every use reaches the same imports.

#include <import_explorer/analysis.hpp>
#include <import_explorer/diagnostic.hpp>
#include <import_explorer/source_file.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

/// A replacement of bytes of a file.
struct Edit {
    /// A whole line includes its end.
    SourceRange removed;
    std::string inserted;
};

/// Gives each diagnostic of \p file its fix, if it has one:
///
/// - A repeated import is removed, a package that is imported twice alike as well.
/// - An unused import is removed. It stays where that could change the meaning of the rest: in a
///   malformed script, where a refused import, a suggestion or a repetition refers to it or to its
///   names, and where it hides a package that a dotted import starts with.
/// - Another package of the same name gets an alias that does not occur in the file.
void proposeFixes(AnalysedFile& file);

/// What \p fix does, with a place `{1}` for the alias.
std::string_view wordsFor(Fix const& fix) noexcept;

/// The changes of \p fix alone, which do not overlap.
std::vector<Edit> editsFor(AnalysedFile const& file, Fix const& fix);

/// \p text with \p edits, in the order of their places.
std::string applyEdits(std::string_view text, std::vector<Edit> const& edits);

/// The text of a file with some fixes applied.
struct FixedText {
    std::string text;
    /// How many were applied.
    std::size_t fixes = 0;
};

/// Applies every fix of the diagnostics of \p file.
FixedText applyFixes(AnalysedFile const& file);

/// A file without anything left to fix.
struct FixedFile {
    AnalysedFile file;
    /// How many fixes were applied.
    std::size_t fixes = 0;
};

/// Analyses \p source and applies fixes until none is left: one can make another possible.
FixedFile analyseAndFix(SourceFile source, AnalysisOptions const& options);

} // namespace explorer
