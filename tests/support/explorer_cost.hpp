// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The cost of processing a script, and the limits in docs/explorer_limits.md.

#include <cstddef>
#include <string>
#include <vector>

namespace support {

/// A kind of report, with all optional contents.
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
    /// Whether the report is about what fixes leave.
    bool appliesFixes = false;
};

inline constexpr KindOfReport drawnReport{"--unused --scopes", KindOfReport::Format::Text, true};
inline constexpr KindOfReport reportAfterFixes{
    "--unused --fix", KindOfReport::Format::Text, false, false, true, true};

/// The reports that apply no fixes.
extern std::vector<KindOfReport> const kindsOfReport;

/// In bytes.
struct ExplorerCost {
    std::size_t output = 0;
    std::size_t memory = 0;
};

/// The cost of reading, analysing and reporting on \p script.
ExplorerCost costOf(std::string const& script, KindOfReport const& kind);

/// The limit for a script of \p size bytes.
constexpr ExplorerCost limitFor(std::size_t size) noexcept {
    constexpr std::size_t outputPerByte = 400;
    constexpr std::size_t memoryPerByte = 2000;
    constexpr std::size_t outputPerRun = 2000;
    constexpr std::size_t memoryPerRun = 16'000;
    return {outputPerRun + outputPerByte * size, memoryPerRun + memoryPerByte * size};
}

} // namespace support
