// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Applies fixes to the text of a file.

#include <import_explorer/analysis.hpp>
#include <import_explorer/diagnostic.hpp>
#include <import_explorer/source_file.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

/// A replacement of a range of a file.
struct Edit {
    /// Includes the line end if a whole line is removed.
    SourceRange removed;
    std::string inserted;
};

/// The edits for \p fix alone. They do not overlap.
std::vector<Edit> editsFor(AnalysedFile const& file, Fix const& fix);

/// Applies \p edits to \p text. They must be in source order.
std::string applyEdits(std::string_view text, std::vector<Edit> const& edits);

/// The text of a file with fixes applied.
struct FixedText {
    std::string text;
    /// The number of fixes applied.
    std::size_t fixes = 0;
};

/// Applies every fix of the diagnostics of \p file.
FixedText applyFixes(AnalysedFile const& file);

/// Fixes are applied in at most so many rounds, each with an analysis of the text that the one
/// before left: a script could have a round for each of its lines, which takes quadratic time.
inline constexpr std::size_t mostRoundsOfFixes = 16;

/// A file after its fixes.
struct FixedFile {
    AnalysedFile file;
    /// The number of fixes applied.
    std::size_t fixes = 0;
};

/// Analyses \p source and applies fixes until none is left, since one fix can enable another, or
/// after the last round; then the diagnostics of the file still have some.
FixedFile analyseAndFix(SourceFile source, AnalysisOptions const& options);

} // namespace explorer
