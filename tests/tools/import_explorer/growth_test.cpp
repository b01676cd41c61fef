// SPDX-License-Identifier: BSL-1.0

/// \file
/// What scripts cost that are made to be costly, for n, 2n and 4n: memory, output and, in an
/// optimised build, instructions. Nothing is timed.

#include "running.hpp"

#include <support/explorer_cost.hpp>
#include <support/row_name.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace {

using support::ExplorerCost;
using support::KindOfReport;

/// `a1b a2b a3b`, where text(1) is `a1b` and so on.
std::string repeat(std::size_t times, std::function<std::string(std::string const&)> const& text) {
    std::string result;
    for (std::size_t number = 1; number <= times; ++number) {
        result += text(std::to_string(number));
    }
    return result;
}

std::string copies(std::size_t times, std::string_view text) {
    return repeat(times, [&](std::string const&) { return std::string(text); });
}

struct Row {
    std::string_view why;
    std::string (*script)(std::size_t size);
    std::size_t size;
    /// For the count of instructions.
    std::string_view options{};

    friend void PrintTo(Row const& row, std::ostream* stream) { *stream << row.why; }
};

using Number = std::string const&;

Row const rows[] = {
    {"conflicts with an import of a long text",
     [](std::size_t size) {
         return "import p@1" + copies(size, ",1") + "\n" + copies(size, "import p\n");
     },
     150},
    {"conflicts with an import of a long text in one command",
     [](std::size_t size) {
         return "import a" + copies(size, "b") + ".p\nimport" + copies(size, " p") + "\n";
     },
     150},
    {"uses of a name from an import of a long text",
     [](std::size_t size) {
         return "import a" + copies(size, "b") + ".x\n" + copies(size, "use x\n");
     },
     150},
    {"uses that a wildcard of a long text may supply",
     [](std::size_t size) {
         return "import a" + copies(size, "b") + ".*\n" + copies(size, "use x\n");
     },
     150},
    {"a name of marks that take no width",
     [](std::size_t size) {
         return "import a.e" + copies(size, "\u0301") + "\nimport e" + copies(size, "\u0301") +
                "\n" + copies(size, "use e\u0301\n");
     },
     150},
    {"a scope whose name is of marks that take no width",
     [](std::size_t size) {
         return "scope e" + copies(size, "\u0301") + " {\nimport a.b\n" + copies(size, "use b\n");
     },
     150},
    {"wildcards and uses in turn",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "import w" + n + ".*\nuse x\n"; });
     },
     200},
    {"wildcards that are hidden by others and uses in turn",
     [](std::size_t size) {
         std::string const all = repeat(size, [](Number n) { return " w" + n + ".*"; });
         return "import" + all + "\nscope s {\nimport" + all + "\n" +
                repeat(size, [](Number n) { return "import v" + n + ".*\nuse x\n"; });
     },
     200},
    {"imports and scopes that inherit them",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "import a.b" + n + "\n"; }) +
                copies(size, "scope s {\n}\n");
     },
     150, "--scopes"},
    {"imports and scopes that each hide one",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "import a.b" + n + "\n"; }) +
                repeat(size, [](Number n) { return "scope s {\nimport b" + n + "\n}\n"; });
     },
     150, "--scopes"},
    {"scopes within one that hides all names",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "import a" + n + ".x\n"; }) +
                "scope s {\nimport x\n" + copies(size, "scope t {\nimport y\n}\n");
     },
     150, "--scopes"},
    {"an import of a long text and scopes that inherit it",
     [](std::size_t size) {
         return "import a" + copies(10 * size, "b") + ".x\n" +
                copies(size, "scope t {\nimport x\n}\n");
     },
     150, "--scopes"},
    {"unknown uses where one package hides all names",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "import a" + n + ".x\n"; }) +
                "scope s {\nimport x\n" + copies(size, "use zz\n");
     },
     150},
    {"unknown uses of long names, all alike",
     [](std::size_t size) {
         std::string const name(30, 'x');
         return repeat(300, [&](Number n) { return "import a." + name + n + "\n"; }) +
                repeat(size, [&](Number n) { return "use " + name + "y" + n + "\n"; });
     },
     100},
    {"nested scopes with uses",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "scope s{\nimport a.b" + n + "\nuse z\n"; });
     },
     280},
    {"nested scopes with dotted imports",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "scope s{\nimport a.b" + n + "\n"; });
     },
     280},
    {"nested scopes with imports of one name",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "scope s{\nimport a" + n + ".x\nuse x\n"; });
     },
     280, "--scopes"},
    {"nested scopes without imports",
     [](std::size_t size) { return "import a.b\n" + copies(size, "scope s{ use b;"); }, 1100,
     "--scopes"},
    {"one line of problems", [](std::size_t size) { return copies(size, "} "); }, 250},
    {"many lines of problems", [](std::size_t size) { return copies(size, "x\n"); }, 500},
    {"one command with many arguments",
     [](std::size_t size) { return "import " + repeat(size, [](Number n) { return " p" + n; }); },
     250},
    {"one command with the same argument over and over",
     [](std::size_t size) { return "import" + copies(size, " a"); }, 500},
    {"many wrong arguments", [](std::size_t size) { return copies(size, "import 1\n"); }, 500},
    {"a long wrong argument", [](std::size_t size) { return "import 1" + copies(size, "1"); },
     2000},
    {"a long use", [](std::size_t size) { return "use " + copies(size, "図"); }, 5000},
    {"names that are printed as their numbers",
     [](std::size_t size) { return copies(size, "import \x1b\x1b\x1b\n"); }, 500},
};

constexpr std::array<std::size_t, 3> factors{1, 2, 4};
using Counts = std::array<std::size_t, 3>;

/// Whether the step from 2n to 4n takes about twice what that from n to 2n takes; what grows with
/// the square takes four times as much.
testing::AssertionResult isLinear(Counts const& counts, std::size_t slack) {
    auto const [one, two, four] = counts;
    std::size_t const firstStep = two - std::min(one, two);
    std::size_t const secondStep = four - std::min(two, four);
    if (secondStep * 10 <= firstStep * 26 + slack * 10) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << one << ", " << two << ", " << four;
}

class Growth : public testing::TestWithParam<Row> {};

TEST_P(Growth, OfOutputAndMemoryIsLinearAndWithinTheLimits) {
    // The others have less in them.
    constexpr std::size_t kinds = 4;
    for (KindOfReport const& kind : std::span(support::kindsOfReport).first(kinds)) {
        Counts output{};
        Counts memory{};
        for (std::size_t index = 0; index < factors.size(); ++index) {
            std::string const script = GetParam().script(factors.at(index) * GetParam().size);
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

#ifdef VALGRIND_PROGRAM

/// `I refs: 1,234,567`
std::size_t countInstructions(support::TemporaryFolder const& folder, std::string_view options) {
    support::Outcome const outcome = support::runInShell(
        VALGRIND_PROGRAM " --tool=cachegrind --cache-sim=no --cachegrind-out-file=/dev/null "
                         "$explorer --quiet " +
            std::string(options) + " script.import >/dev/null",
        folder.path());
    std::string const label = "refs:";
    std::size_t const place = outcome.errorOutput.find(label);
    if (place == std::string::npos) {
        ADD_FAILURE() << outcome.errorOutput;
        return 0;
    }
    std::string number = outcome.errorOutput.substr(place + label.size());
    number.erase(number.find('\n'));
    std::erase_if(number, [](char letter) { return letter < '0' || letter > '9'; });
    return std::stoul(number);
}

TEST_P(Growth, OfInstructionsIsLinear) {
    Counts counts{};
    for (std::size_t index = 0; index < factors.size(); ++index) {
        support::TemporaryFolder const folder;
        folder.write("script.import", GetParam().script(factors.at(index) * GetParam().size));
        counts.at(index) = countInstructions(folder, GetParam().options);
    }
    EXPECT_TRUE(isLinear(counts, 500'000));
}

#endif

INSTANTIATE_TEST_SUITE_P(Explorer, Growth, testing::ValuesIn(rows), support::RowName());

} // namespace
