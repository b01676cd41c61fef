// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Runs the program.

#include <import_explorer/options.hpp>
#include <import_explorer/output.hpp>

namespace explorer {

/// Reads the files that \p options name and writes the report to \p output. Shows progress on
/// \p terminal if it is a terminal. Stops early, without an error, if the reader closes \p output.
///
/// \throws std::system_error if the output cannot be written.
ExitStatus explore(Options const& options, Output& output, Output& terminal);

} // namespace explorer
