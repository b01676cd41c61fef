// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The least that parsing a command can cost: the questions that must be put to the platform, and
/// copies of the texts that the entries keep, in the vectors in which the parser keeps them.

#include <import/argument_parser.hpp>
#include <import/arguments.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace floors {

/// What all arguments of a command are, which is known beforehand here. None is in error.
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
    /// Fills the records, which is the share of classification.
    CopiedCommand(cppcompat::span<std::u16string const> texts, Form form);

    /// Moves the texts of the records into entries.
    std::vector<lf::import::ParsedImportEntry> const& copyEntries();

  private:
    std::vector<lf::import::ParsedImportArgument> arguments;
    std::vector<lf::import::ParsedImportEntry> entries;
};

} // namespace floors
