// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What the imports of a source file mean.

#include <import_explorer/capped.hpp>
#include <import_explorer/diagnostic.hpp>
#include <import_explorer/script_reader.hpp>
#include <import_explorer/source_file.hpp>

#include <host/text.hpp>

#include <import/argument_parser.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

using EntryKind = lf::import::host::ImportKind;

/// `name`, `wildcard`, `package`
std::string_view toText(EntryKind kind) noexcept;

/// What happened to an entry.
enum class EntryOutcome {
    /// It was not meant for a list.
    Parsed,
    /// It was added to the list of its scope.
    Added,
    /// The list already had it from an earlier import.
    Repeated,
    /// It conflicts with an earlier import.
    Refused,
};

/// `parsed`, `added`, `repeated`, `refused`
std::string_view toText(EntryOutcome outcome) noexcept;

/// One import, in UTF-8.
struct AnalysedEntry {
    EntryKind kind = EntryKind::FullyQualified;
    /// As rendered by the library.
    std::string text;
    /// Nothing for a wildcard.
    std::optional<std::string> introducedName;
    /// Nothing for a package.
    std::optional<std::string> rootElement;
    /// Index of the argument that it comes from.
    std::size_t argument = 0;
    EntryOutcome outcome = EntryOutcome::Parsed;
    /// The entry that it repeats or conflicts with.
    std::optional<EntryReference> earlier;
    /// Whether a use reaches it: the used name is this import or, for a wildcard, may come from it.
    bool isUsed = false;
};

/// A command with its imports: none if the command is in error or has only empty arguments.
struct AnalysedCommand {
    ImportCommand command;
    std::vector<AnalysedEntry> entries;
};

/// A use of a name, looked up in the imports before it.
struct AnalysedUse {
    UseOfName use;
    /// The name that was looked up: the longest leading part of a dotted name that an import
    /// introduces, or its first element if there is none.
    std::string name;
    /// The imports that introduce the name, nearest first: at most one package and one fully
    /// qualified name.
    std::vector<EntryReference> imports;
    /// If no import introduces it: the wildcards that may supply it, nearest first.
    Capped<EntryReference> wildcards;
    /// For an unknown name: the import that introduces the most similar name.
    std::optional<EntryReference> suggestion;

    /// A dotted name is known even without an import: it may be fully qualified.
    bool isDotted() const { return use.name.text.find('.') != std::string::npos; }

    bool isUnknown() const { return imports.empty() && wildcards.listed.empty() && !isDotted(); }
};

/// An entry of an enclosing scope that is hidden.
struct HiddenEntry {
    EntryReference entry;
    /// The entry that hides it.
    EntryReference by;
};

/// The entries of enclosing scopes that a scope sees or hides at the end of the file.
struct ScopeView {
    /// Packages, then names, then wildcards; innermost scope first.
    Capped<EntryReference> inherited;
    /// Entries that are visible in the enclosing scope and that this scope hides.
    Capped<HiddenEntry> hidden;
};

/// Limit for the wildcards listed for one name.
inline constexpr std::size_t mostListedWildcards = 5;

/// Limits for the entries listed in views: per kind and view, and one per so many bytes of the
/// script over all views of a file.
inline constexpr std::size_t mostViewedEntries = 100;
inline constexpr std::size_t bytesForEachViewedEntry = 4;

/// The deepest level at which a scope gets a ScopeView.
inline constexpr std::size_t deepestViewedLevel = 16;

/// Limit for the entries compared for views, per byte of the script.
inline constexpr std::size_t timeForEachByte = 8;

/// Limit for the number of enclosing scopes with imports; scopes nested deeper get no list, because
/// the time of a lookup is proportional to that number.
inline constexpr std::size_t deepestListedLevel = 256;

struct AnalysedScope {
    Scope scope;
    /// The number of enclosing scopes.
    std::size_t level = 0;
    /// The entries of its list, in source order.
    std::vector<EntryReference> entries;
    /// Null if not requested, below the deepest viewed level, or once comparing entries has reached
    /// its limit for the file.
    std::optional<ScopeView> view;
};

/// All results for one file.
struct AnalysedFile {
    SourceFile source;
    /// The whole file first; each scope follows its parent and precedes the parent's next sibling.
    std::vector<AnalysedScope> scopes;
    /// In source order.
    std::vector<AnalysedCommand> commands;
    /// In source order.
    std::vector<AnalysedUse> uses;
    /// Problems of the script, its commands and its uses, in source order.
    std::vector<Diagnostic> diagnostics;

    AnalysedEntry const& at(EntryReference const& reference) const {
        return commands.at(reference.command).entries.at(reference.entry);
    }

    /// The argument that an entry comes from.
    SourceRange const& rangeOf(EntryReference const& reference) const {
        return commands.at(reference.command).command.arguments.at(at(reference).argument).range;
    }
};

/// The text of a note, with the placeholder `{1}` for its argument. Refers to the file's text.
struct NoteInWords {
    std::string_view words;
    std::string_view argument;
    SourceRange range;
};

NoteInWords describe(AnalysedFile const& file, Note const& note);

/// How to analyse a file.
struct AnalysisOptions {
    /// With SourceSyntax::Lines, commands are only parsed: unrelated lines form no scope.
    SourceSyntax syntax = SourceSyntax::Script;
    lf::import::Behavior behavior = lf::import::Behavior::FollowFeatureSwitch;
    /// Whether to make a ScopeView of each scope.
    bool viewsScopes = false;
    /// Whether to warn of unused and repeated imports.
    bool warnsOfUnusedImports = false;
};

/// Reads \p source, parses its commands, adds their imports to the lists of their scopes, and looks
/// up the names that are used.
AnalysedFile analyse(SourceFile source, AnalysisOptions const& options);

} // namespace explorer
