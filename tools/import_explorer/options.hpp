// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The command line.

#include <import_explorer/script_reader.hpp>

#include <import/argument_parser.hpp>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace explorer {

/// Exit status of the program.
enum class ExitStatus : std::uint8_t {
    Success = 0,
    /// There were errors in the input, or a file could not be read or fixed.
    ErrorsFound = 1,
    /// The command line was wrong, or the output could not be written.
    Failure = 2,
    /// Memory ran out; the report names the file.
    OutOfMemory = 3,
};

enum class ReportFormat {
    Text,
    Json,
    Sarif,
};

struct Options {
    /// Files, folders, or `-`.
    std::vector<std::string> paths;
    lf::import::Behavior behavior = lf::import::Behavior::FollowFeatureSwitch;
    bool isFeatureOn = true;
    SourceSyntax syntax = SourceSyntax::Script;
    ReportFormat format = ReportFormat::Text;
    bool isQuiet = false;
    bool showsScopes = false;
    bool showsUnusedImports = false;
    bool appliesFixes = false;
};

/// Text to print instead of running.
struct Notice {
    /// To be printed to standard output on success, otherwise to standard error.
    std::string text;
    ExitStatus status = ExitStatus::Success;
};

std::variant<Options, Notice> parseOptions(int argc, char const* const* argv);

} // namespace explorer
