// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The words for the library's messages.

#include <span>
#include <string>
#include <string_view>

namespace explorer {

/// The words for the message with this key, with places `{1}`, `{2}` for its arguments. They live
/// as long as the program; a key without words has some that say so.
std::string_view wordsFor(std::string_view key);

/// \p words with each place filled. Arguments are taken as they are, whatever is in them.
std::string fillPlaces(std::string_view words, std::span<std::string const> arguments);

} // namespace explorer
