// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The minimal cost of parsing a command: the questions that the platform must answer, and copies
/// of the texts that the entries store, in the same kinds of vectors as the parser's.

#include <import/argument_parser.hpp>
#include <import/arguments.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace floors {

/// The form of all arguments of a command, which is known in advance here. None is an error.
enum class Form : std::uint8_t {
    FullyQualified,
    LegacyFullyQualified,
    Wildcard,
    Package,
    VersionedPackage,
};

/// A command's arguments as records, then as entries.
class CopiedCommand {
  public:
    /// Fills the records, which is the part of classification.
    CopiedCommand(cppcompat::span<std::u16string const> texts, Form form);

    /// Moves the texts of the records into entries.
    std::vector<lf::import::ParsedImportEntry> const& copyEntries();

  private:
    std::vector<lf::import::ParsedImportArgument> arguments;
    std::vector<lf::import::ParsedImportEntry> entries;
};

} // namespace floors
