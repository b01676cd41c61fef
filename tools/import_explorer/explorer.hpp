// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A run of the program.

#include <import_explorer/options.hpp>
#include <import_explorer/output.hpp>

namespace explorer {

/// Reads what the options name and writes the report to \p output; progress goes to \p terminal if
/// that is one. Ends quietly, and early, when nobody reads the output any more.
///
/// \throws std::system_error when the output cannot be written.
ExitStatus explore(Options const& options, Output& output, Output& terminal);

} // namespace explorer
