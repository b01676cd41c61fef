// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Colours of the text report.

#include <cstdint>
#include <string>
#include <string_view>

namespace explorer {

/// What a piece of text is.
enum class Role : std::uint8_t {
    /// File names and messages.
    Strong,
    /// What frames the rest.
    Faint,
    Error,
    Warning,
    Note,
    /// The kind of an entry.
    Kind,
};

/// Ends whatever colour a terminal writes in.
inline constexpr std::string_view resetSequence = "\x1b[0m";

/// Colours text, or leaves it alone.
class Style {
  public:
    explicit Style(bool inColour) noexcept : isColoured(inColour) {}

    std::string apply(Role role, std::string_view text) const;

  private:
    bool isColoured;
};

} // namespace explorer
