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
/// A statement ends with its line or with `;`. An argument is a sequence of characters other than
/// blanks, or quoted text. `{` and `}` are only special where they are separate words.

#include <import_explorer/diagnostic.hpp>
#include <import_explorer/source_file.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace explorer {

/// How to read a file.
enum class SourceSyntax {
    /// The script language.
    Script,
    /// Any text: lines whose first word is `import` are commands, all others are skipped.
    Lines,
};

/// Index in Script::scopes.
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

/// A script, stored without nesting, so that its depth is not limited by the stack.
struct Script {
    /// The whole file first; every scope follows its parent.
    std::vector<Scope> scopes{Scope{}};
    /// In source order.
    std::vector<Statement> statements;
    /// Syntax errors of the script, in source order.
    std::vector<Diagnostic> problems;
};

/// Reads \p source. After a syntax error, reading continues on the next line.
Script readScript(SourceFile const& source, SourceSyntax syntax);

} // namespace explorer
