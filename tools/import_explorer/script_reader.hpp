// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Reads scripts: scopes, import commands and uses of names, each with its place in the source.
///
///     # A comment; so is what follows two slashes.
///     scope name {
///         import a.b.c pkg@^1.2 ""
///         dynamic import a.b.*
///         use c
///     }
///
/// A statement ends with its line or with `;`. An argument is a run of characters that are not
/// blank, or a text in double quotes. `{` and `}` have their meaning where they stand alone.

#include <import_explorer/diagnostic.hpp>
#include <import_explorer/source_file.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace explorer {

/// How files are written.
enum class SourceSyntax {
    /// The script language.
    Script,
    /// Any text: lines whose first word is `import` are commands, all others are skipped.
    Lines,
};

/// Position of a scope in Script::scopes.
using ScopeIndex = std::size_t;

/// A word of the source.
struct Word {
    /// Without quotes.
    std::string text;
    /// With quotes.
    SourceRange range;
};

/// A block of a script, or the whole file.
struct Scope {
    /// Empty for the whole file.
    std::string name;
    /// Nothing for the whole file.
    std::optional<ScopeIndex> parent;
    /// `scope` and the name.
    SourceRange range;
};

/// `import a.b.c`, `dynamic import a.b.c`
struct ImportCommand {
    ScopeIndex scope = 0;
    bool isDynamic = false;
    std::vector<Word> arguments;
    /// The whole command.
    SourceRange range;
};

/// `use name`
struct UseOfName {
    ScopeIndex scope = 0;
    Word name;
};

using Statement = std::variant<ImportCommand, UseOfName>;

/// A script, flat, so that no depth of nesting is too deep.
struct Script {
    /// The whole file first; every scope behind its parent.
    std::vector<Scope> scopes{Scope{}};
    /// In source order.
    std::vector<Statement> statements;
    /// What is wrong with the script itself, in source order.
    std::vector<Diagnostic> problems;
};

/// Reads \p source. What is malformed ends up in the problems, and reading goes on with the next
/// line.
Script readScript(SourceFile const& source, SourceSyntax syntax);

} // namespace explorer
