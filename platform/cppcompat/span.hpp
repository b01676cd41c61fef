// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The span type of the host's interfaces.

#include <span>

namespace cppcompat {

using std::span;

} // namespace cppcompat
