// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Interprets the input bytes of a fuzz target as choices or texts.

#include <cstddef>
#include <cstdint>
#include <iostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// Reads bytes from front to back; after the last byte, it returns zeros.
class Input {
  public:
    Input(std::uint8_t const* data, std::size_t size) noexcept : bytes(data, size) {}

    bool isEmpty() const noexcept { return bytes.empty(); }

    std::uint8_t takeByte() noexcept {
        if (bytes.empty()) {
            return 0;
        }
        std::uint8_t const byte = bytes.front();
        bytes = bytes.subspan(1);
        return byte;
    }

    /// A number below \p bound, which is at most 256.
    std::size_t below(std::size_t bound) noexcept { return takeByte() % bound; }

  private:
    std::span<std::uint8_t const> bytes;
};

/// Any sequence of UTF-16 texts, with a readable form for simple ones: one text per line, ASCII as
/// is; any other byte announces a code unit, given by the next two bytes.
inline std::vector<std::u16string> takeLines(Input input) {
    std::vector<std::u16string> lines;
    if (!input.isEmpty()) {
        lines.emplace_back();
    }
    while (!input.isEmpty()) {
        std::uint8_t const byte = input.takeByte();
        if (byte == '\n') {
            lines.emplace_back();
        } else if (byte < 0x80) {
            lines.back() += static_cast<char16_t>(byte);
        } else {
            unsigned const high = input.takeByte();
            lines.back() += static_cast<char16_t>((high << 8U) | input.takeByte());
        }
    }
    return lines;
}

/// Reports a finding and aborts, which libFuzzer detects.
[[noreturn]] inline void fail(std::string_view finding) {
    std::cerr << finding << '\n';
    __builtin_trap();
}

inline void require(bool condition, std::string_view rule) {
    if (!condition) {
        fail(rule);
    }
}

} // namespace fuzz
