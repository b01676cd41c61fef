// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The rules of the `import` command in their most literal form, to compare the library with.
///
/// Written for comparison, not for speed, as tables of rules. Uses nothing of the library, only the
/// host's services.

#include "outcome.hpp"

#include <string>
#include <vector>

namespace model {

/// The meaning of the command with these arguments.
///
/// \throws what the host's services throw, except that a refused specifier of an argument with an
///         `@` is an outcome.
std::vector<Outcome> parseCommand(std::vector<std::u16string> const& arguments,
                                  bool packageImportsOn);

} // namespace model
