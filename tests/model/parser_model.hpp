// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The rules of the `import` command in their most literal form, to compare the library with.
///
/// Written for comparison, not for speed, as tables of rules. Uses only the host's services, not
/// the library.

#include "outcome.hpp"

#include <string>
#include <vector>

namespace model {

/// The result of parsing the command with these arguments.
///
/// \throws the exceptions of the host's services, except that a rejected specifier of an argument
///         with an `@` is an outcome.
std::vector<Outcome> parseCommand(std::vector<std::u16string> const& arguments,
                                  bool packageImportsOn);

} // namespace model
