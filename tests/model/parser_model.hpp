// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The rules of the `import` command in their most literal reading, to hold the library against.
///
/// Written for comparison, not for speed: the arguments are classified one by one into flat
/// records, and the command grammar is one function per rule. Nothing of the library is used, only
/// the host's services.

#include "outcome.hpp"

#include <string>
#include <vector>

namespace model {

/// What the command with these arguments means.
///
/// \throws what the host's services throw, except that a refused specifier of an argument with an
///         `@` is an outcome.
std::vector<Outcome> parseCommand(std::vector<std::u16string> const& arguments,
                                  bool packageImportsOn);

} // namespace model
