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

/// Limit for the rounds of fixes. Each round analyses the text that the previous one produced, so a
/// script that needs a round for each of its lines would take quadratic time.
inline constexpr std::size_t mostRoundsOfFixes = 16;

/// A file after its fixes.
struct FixedFile {
    AnalysedFile file;
    /// The number of fixes applied.
    std::size_t fixes = 0;
};

/// Analyses \p source and applies fixes in rounds, since one fix can enable another. Stops when
/// none is left or after mostRoundsOfFixes rounds; then the diagnostics of the file may still have
/// fixes.
FixedFile analyseAndFix(SourceFile source, AnalysisOptions const& options);

} // namespace explorer
