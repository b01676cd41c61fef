// SPDX-License-Identifier: BSL-1.0

/// \file
/// Searches for scripts for which the explorer exceeds the limits on output or memory in
/// docs/explorer_limits.md, in any kind of report.

#include "input.hpp"

#include <support/explorer_cost.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void check(std::string const& script, support::KindOfReport const& kind) {
    support::ExplorerCost const cost = support::costOf(script, kind);
    support::ExplorerCost const limit = support::limitFor(script.size());
    if (cost.output > limit.output || cost.memory > limit.memory) {
        std::fprintf(stderr, "%s: %zu bytes of script, %zu bytes of output, %zu bytes of memory\n",
                     kind.options, script.size(), cost.output, cost.memory);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const script(reinterpret_cast<char const*>(data), size);
    for (support::KindOfReport const& kind : support::kindsOfReport) {
        check(script, kind);
    }
    return 0;
}
