// SPDX-License-Identifier: BSL-1.0

/// \file
/// Memory and output of scripts designed to be costly, for size n, 2n and 4n. Nothing is timed;
/// growth_subjects.cpp counts instructions.

#include <support/costly_scripts.hpp>
#include <support/explorer_cost.hpp>
#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>

namespace {

using support::CostlyScript;
using support::ExplorerCost;
using support::growthFactors;
using support::KindOfReport;

using Counts = std::array<std::size_t, growthFactors.size()>;

/// Whether the increase from 2n to 4n is about twice the increase from n to 2n. For quadratic
/// growth, it is four times as large.
testing::AssertionResult isLinear(Counts const& counts, std::size_t slack) {
    auto const [one, two, four] = counts;
    std::size_t const firstStep = two - std::min(one, two);
    std::size_t const secondStep = four - std::min(two, four);
    if (secondStep * 10 <= firstStep * 26 + slack * 10) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << one << ", " << two << ", " << four;
}

class Growth : public testing::TestWithParam<CostlyScript> {};

TEST_P(Growth, OfOutputAndMemoryIsLinearAndWithinTheLimits) {
    // The remaining kinds report less.
    constexpr std::size_t numberOfFullKinds = 4;
    auto const full = std::span(support::kindsOfReport).first(numberOfFullKinds);
    std::vector<KindOfReport> kinds(full.begin(), full.end());
    kinds.push_back(support::reportAfterFixes);
    for (KindOfReport const& kind : kinds) {
        Counts output{};
        Counts memory{};
        for (std::size_t index = 0; index < growthFactors.size(); ++index) {
            std::string const script = GetParam().make(growthFactors.at(index) * GetParam().size);
            ExplorerCost const cost = support::costOf(script, kind);
            ExplorerCost const limit = support::limitFor(script.size());
            EXPECT_LE(cost.output, limit.output) << kind.options << " of " << script.size();
            EXPECT_LE(cost.memory, limit.memory) << kind.options << " of " << script.size();
            output.at(index) = cost.output;
            memory.at(index) = cost.memory;
        }
        EXPECT_TRUE(isLinear(output, 500)) << "output " << kind.options;
        EXPECT_TRUE(isLinear(memory, 5000 + memory[0] / 10)) << "memory " << kind.options;
    }
}

INSTANTIATE_TEST_SUITE_P(Explorer, Growth, testing::ValuesIn(support::costlyScripts),
                         support::RowName());

} // namespace
