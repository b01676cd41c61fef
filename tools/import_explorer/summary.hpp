// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The totals of a run.

#include <import_explorer/analysis.hpp>
#include <import_explorer/source_file.hpp>

#include <cstddef>

namespace explorer {

struct Summary {
    std::size_t files = 0;
    std::size_t commands = 0;
    std::size_t uses = 0;
    // Imports by kind, without refused ones.
    std::size_t names = 0;
    std::size_t wildcards = 0;
    std::size_t packages = 0;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    /// Fixes applied.
    std::size_t fixes = 0;

    std::size_t entries() const noexcept { return names + wildcards + packages; }

    void count(AnalysedFile const& file);

    /// Counts a failure as an error.
    void count(LoadFailure const& failure);
};

} // namespace explorer
