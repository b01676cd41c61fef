// SPDX-License-Identifier: BSL-1.0

/// \file
/// Compares the program's reports on the example scripts with the files in the folder golden. After
/// an intended change of a report, update the files and review the difference:
///
///     UPDATE_GOLDEN=1 ctest --test-dir build/dev -R Golden && git diff tests

#include "running.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>

namespace {

namespace fs = std::filesystem;

struct GoldenCase {
    std::string_view file;
    std::string_view arguments;
    bool isOnTerminal = false;

    friend std::ostream& operator<<(std::ostream& stream, GoldenCase const& example) {
        return stream << example.file;
    }
};

/// Replaces the line ends of a terminal by those of a file, and the run time by `TIME`.
std::string normalized(std::string report) {
    std::erase(report, '\r');
    if (report.ends_with(" s\n")) {
        report.erase(report.rfind(", "));
        report += ", TIME s\n";
    }
    return report;
}

std::string readFile(fs::path const& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool isSet(char const* variable) {
    return std::getenv(variable) != nullptr; // NOLINT(concurrency-mt-unsafe)
}

class Golden : public testing::TestWithParam<GoldenCase> {};

TEST_P(Golden, ReportIsAsReviewed) {
    auto const& [file, arguments, isOnTerminal] = GetParam();
    std::string const command = "TERM=xterm NO_COLOR= import_explorer " + std::string(arguments);
    if (isOnTerminal && !support::canMakeTerminals()) {
        GTEST_SKIP() << "There is no pseudo-terminal here.";
    }
    auto const run = isOnTerminal ? support::runOnTerminal : support::runInShell;
    support::Outcome const outcome = run(command, EXAMPLES_FOLDER);
    EXPECT_EQ(outcome.status, 1) << "the examples have errors";
    std::string const report = normalized(outcome.output);
    fs::path const golden = fs::path(GOLDEN_FOLDER) / file;
    if (isSet("UPDATE_GOLDEN")) {
        ASSERT_FALSE(isSet("CI")) << "a golden file that is updated is not compared";
        std::ofstream(golden, std::ios::binary) << report;
    }
    EXPECT_EQ(report, readFile(golden));
}

INSTANTIATE_TEST_SUITE_P(
    Examples, Golden,
    testing::Values(GoldenCase{"tour.txt", "--scopes tour.import"},
                    GoldenCase{"tour_in_colour.txt", "--scopes tour.import", true},
                    GoldenCase{"tour.json", "--json --scopes tour.import"},
                    GoldenCase{"tour_unused.txt", "--quiet --unused tour.import"},
                    GoldenCase{"legacy.txt", "--packages off --scopes legacy.import"}));

} // namespace
