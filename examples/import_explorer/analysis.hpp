// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What the library makes of the import commands of a source file.

#include <import_explorer/diagnostic.hpp>
#include <import_explorer/script_reader.hpp>
#include <import_explorer/source_file.hpp>

#include <import/argument_parser.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

enum class EntryKind {
    /// `a.b.c`
    Name,
    /// `a.b.*`
    Wildcard,
    /// `pkg@^1.2`
    Package,
};

/// `name`, `wildcard`, `package`
std::string_view toText(EntryKind kind) noexcept;

/// One import, in UTF-8.
struct AnalysedEntry {
    EntryKind kind = EntryKind::Name;
    /// As the library renders it.
    std::string text;
    /// Nothing for a wildcard.
    std::optional<std::string> introducedName;
    /// Nothing for a package.
    std::optional<std::string> rootElement;
    /// The argument that it comes from, counted from 0.
    std::size_t argument = 0;
};

/// A command with what it imports: nothing when it is in error or has no arguments that count.
struct AnalysedCommand {
    ImportCommand command;
    std::vector<AnalysedEntry> entries;
};

/// All that is to be said about one file.
struct AnalysedFile {
    SourceFile source;
    /// In source order.
    std::vector<AnalysedCommand> commands;
    /// Of the script and of its commands, in source order.
    std::vector<Diagnostic> diagnostics;
};

/// Reads \p source and parses its commands.
AnalysedFile analyse(SourceFile source, SourceSyntax syntax, lf::import::Behavior behavior);

} // namespace explorer
