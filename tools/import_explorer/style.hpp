// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Colours of the text report.

#include <cstdint>
#include <string>
#include <string_view>

namespace explorer {

/// The meaning of a piece of text, which determines its colour.
enum class Role : std::uint8_t {
    /// File names and messages.
    Strong,
    /// Frames and other decoration.
    Faint,
    Error,
    Warning,
    Note,
    /// The kind of an entry.
    Kind,
};

/// Resets the colour of a terminal.
inline constexpr std::string_view resetSequence = "\x1b[0m";

/// Applies colours, or leaves text unchanged.
class Style {
  public:
    explicit Style(bool inColour) noexcept : isColoured(inColour) {}

    std::string apply(Role role, std::string_view text) const;

  private:
    bool isColoured;
};

} // namespace explorer
