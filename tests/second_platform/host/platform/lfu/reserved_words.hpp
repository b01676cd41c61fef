// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// On this host, the unlucky numbers are reserved.

#include <string>

namespace lfu {

/// \throws std::invalid_argument for any selector but 8.
bool isReservedWord(std::u16string const& word, int selector);

} // namespace lfu
