// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// UTF-16 texts for messages of tests, in which different texts look different.

#include <array>
#include <cstdio>
#include <string>

namespace lf::import::host_testing {

/// \p text in quotes, everything but plain ASCII as `\uXXXX`, so that unpaired surrogates and
/// look-alikes are distinguishable.
inline std::string quoted(std::u16string const& text) {
    std::string result = "\"";
    for (char16_t const unit : text) {
        bool const isPlain = unit >= 0x20 && unit < 0x7F && unit != u'"' && unit != u'\\';
        if (isPlain) {
            result += static_cast<char>(unit);
        } else {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04X", static_cast<unsigned>(unit));
            result += escape.data();
        }
    }
    return result + "\"";
}

} // namespace lf::import::host_testing
