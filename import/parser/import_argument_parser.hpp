// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The parser of one `import` command: a cursor over classified arguments, and the command grammar.

#include <import/argument_parser.hpp>
#include <import/arguments.hpp>
#include <import/platform.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lf::import {

/// Classifies every argument when it is constructed; parse() then reads the records.
class ImportArgumentParser final : public IImportArgumentParser {
  public:
    /// The grammar by which arguments are classified.
    using Classifier = ParsedImportArgument (*)(std::u16string_view argument);

    ImportArgumentParser(cppcompat::span<const std::u16string> texts, Classifier classify);
    ImportArgumentParser(lf::astapi::ImportCommandView command, Classifier classify);

    std::vector<ParsedImportEntry>& parse() override;

  private:
    /// The kinds of arguments that the command grammar distinguishes.
    enum class Kind : std::uint8_t { Name, Package, AliasKeyword, NothingLeft };

    // The productions of the command grammar (command_grammar.cpp); each starts at the cursor.
    void parseCommand();
    void parseNameList();
    void parsePackageList();
    void parseAliasClause();
    void parseAliasName();
    void expectEndOfNameList();
    void expectEndOfPackageList();
    void expectEndOfAliasClause();

    // The cursor. Ignored arguments are skipped.
    std::size_t nextIndex() const noexcept;
    Kind peek() const noexcept;
    bool isFinished() const noexcept;
    std::size_t consume() noexcept;

    // The actions of productions on the result.
    static PackageImportEntry makePackageEntry(PackageNameImportArgument&& argument);
    void takeName();
    void takePackage();
    void renameThePackage(PackageNameImportArgument&& alias, ImportArgumentIndex index);
    void recordError(resource_core::BaseMsgID const& message, ImportArgumentIndex index);

    std::vector<ParsedImportEntry> entries;
    std::vector<ParsedImportArgument> arguments; ///< in command order; moved from when consumed
    std::size_t cursor = 0;                      ///< of the first argument not yet consumed
    bool stopped = false;                        ///< a cross-argument error has been recorded
};

} // namespace lf::import
