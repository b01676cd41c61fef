// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What a script costs the explorer, and what docs/explorer_limits.md promises of it.

#include <cstddef>
#include <string>
#include <vector>

namespace support {

/// A report that the explorer writes, with as much in it as there can be.
struct KindOfReport {
    char const* options;
    enum class Format {
        Text,
        Json,
        Sarif,
    } format = Format::Text;
    bool hasScopes = false;
    bool readsLines = false;
    bool hasPackageImports = true;
};

extern std::vector<KindOfReport> const kindsOfReport;

/// In bytes.
struct ExplorerCost {
    std::size_t output = 0;
    std::size_t memory = 0;
};

/// Reads, analyses and reports on \p script.
ExplorerCost costOf(std::string const& script, KindOfReport const& kind);

/// The most that a script of \p size bytes may cost.
constexpr ExplorerCost limitFor(std::size_t size) noexcept {
    constexpr std::size_t outputPerByte = 400;
    constexpr std::size_t memoryPerByte = 2000;
    constexpr std::size_t outputPerRun = 2000;
    constexpr std::size_t memoryPerRun = 16'000;
    return {outputPerRun + outputPerByte * size, memoryPerRun + memoryPerByte * size};
}

} // namespace support
