// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The span type for the arguments of a command.

#include <span>

namespace cppcompat {

using std::span;

} // namespace cppcompat
