// SPDX-License-Identifier: BSL-1.0

/// \file
/// Counts the explorer's instructions with callgrind: for scripts designed to be costly, of size n,
/// 2n and 4n, and for colliding names and the same number of random names.

#include <flood.hpp>
#include <support/costly_scripts.hpp>
#include <support/counted_instructions.hpp>
#include <support/explorer_cost.hpp>

#include <fl/i18n/ustring_conversions.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace {

using support::CostlyScript;
using workload::Flood;

void measure(std::string const& script, support::KindOfReport const& kind,
             std::string const& name) {
    {
        support::CountedInstructions const counting;
        static_cast<void>(support::costOf(script, kind));
    }
    support::writeDownInstructions(name);
}

void measureGrowth(CostlyScript const& script) {
    for (std::size_t const factor : support::growthFactors) {
        std::size_t const size = factor * script.sizeToCount;
        measure(script.make(size),
                // Drawing scopes is the most expensive report.
                script.isToBeFixed ? support::reportAfterFixes : support::drawnReport,
                "growth: " + std::string(script.why) + ": " + std::to_string(size));
    }
}

/// Each name is introduced and used both inside and outside a scope.
std::string makeScript(Flood flood) {
    constexpr std::size_t count = 200;
    std::string imports;
    std::string uses;
    for (std::u16string const& name : workload::makeFlood(flood, count, u"name")) {
        std::string const text = fl::i18n::ustring_to_utf8(name);
        imports.append("import a.").append(text).append(" b.").append(text).append(".*\n");
        uses.append("use ").append(text).append("\n");
    }
    return imports + uses + "scope s {\n" + imports + uses + "}\n";
}

void measureFlood(Flood flood, std::string_view names) {
    measure(makeScript(flood), support::drawnReport, "flood: the explorer: " + std::string(names));
}

} // namespace

int main() {
    for (CostlyScript const& script : support::costlyScripts) {
        measureGrowth(script);
    }
    measureFlood(Flood::Random, "8 units at random");
    measureFlood(Flood::Colliding, "8 units of one standard hash");
}
