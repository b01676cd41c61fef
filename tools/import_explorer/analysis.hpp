// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What the library makes of the imports of a source file.

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

/// What became of an entry.
enum class EntryOutcome {
    /// It was for no scope's list.
    Parsed,
    /// The list of its scope has it.
    Added,
    /// The list had it already, from an earlier import.
    Repeated,
    /// It conflicts with an earlier import.
    Refused,
};

/// `parsed`, `added`, `repeated`, `refused`
std::string_view toText(EntryOutcome outcome) noexcept;

/// One import, in UTF-8.
struct AnalysedEntry {
    EntryKind kind = EntryKind::FullyQualified;
    /// As the library renders it.
    std::string text;
    /// Nothing for a wildcard.
    std::optional<std::string> introducedName;
    /// Nothing for a package.
    std::optional<std::string> rootElement;
    /// The argument that it comes from, counted from 0.
    std::size_t argument = 0;
    EntryOutcome outcome = EntryOutcome::Parsed;
    /// The one that it repeats or conflicts with.
    std::optional<EntryReference> earlier;
    /// Whether some use of a name reaches it: finds it or, of a wildcard, may find something in it.
    bool isUsed = false;
};

/// A command with what it imports: nothing when it is in error or has no arguments that count.
struct AnalysedCommand {
    ImportCommand command;
    std::vector<AnalysedEntry> entries;
};

/// What a name is where it is used, by the imports before it.
struct AnalysedUse {
    UseOfName use;
    /// What was looked up: of a dotted name, as many of its first elements as an import introduces,
    /// or else the first.
    std::string name;
    /// What introduces the name, the nearest first: at most one package and one fully qualified
    /// name.
    std::vector<EntryReference> imports;
    /// Where nothing introduces it: the wildcards that may supply it, the nearest first.
    Capped<EntryReference> wildcards;
    /// For a name that is found nowhere: what introduces the most similar name.
    std::optional<EntryReference> suggestion;

    /// A dotted name whose first element nothing introduces stands for itself.
    bool isDotted() const { return use.name.text.find('.') != std::string::npos; }

    bool isUnknown() const { return imports.empty() && wildcards.listed.empty() && !isDotted(); }
};

/// An entry of an enclosing scope that cannot be seen any more.
struct HiddenEntry {
    EntryReference entry;
    /// What hides it.
    EntryReference by;
};

/// What a scope sees of the scopes around it when the whole file has been read.
struct ScopeView {
    /// Outward: packages, then names, then wildcards.
    Capped<EntryReference> inherited;
    /// What its parent sees and itself hides.
    Capped<HiddenEntry> hidden;
};

/// So many of the wildcards that may supply a name are listed.
inline constexpr std::size_t mostListedWildcards = 5;

/// A view lists so many entries of a kind, as long as the views of a file list no more than one
/// entry for so many bytes of the script.
inline constexpr std::size_t mostViewedEntries = 100;
inline constexpr std::size_t bytesForEachViewedEntry = 4;

/// The number of scopes around the scopes that still get a ScopeView.
inline constexpr std::size_t deepestViewedLevel = 16;

/// Views are made while they compare no more than so many entries for each byte of the script.
inline constexpr std::size_t timeForEachByte = 8;

/// The number of scopes with imports around a scope that still gets a list. A question to a list
/// takes a step for each.
inline constexpr std::size_t deepestListedLevel = 256;

struct AnalysedScope {
    Scope scope;
    /// The number of scopes around it.
    std::size_t level = 0;
    /// The entries of its list, in source order.
    std::vector<EntryReference> entries;
    /// Where it was asked for, down to the deepest level that gets one, and as long as comparing
    /// entries is in proportion to the size of the script.
    std::optional<ScopeView> view;
};

/// All that is to be said about one file.
struct AnalysedFile {
    SourceFile source;
    /// The whole file first; every scope directly behind its parent or a scope within that.
    std::vector<AnalysedScope> scopes;
    /// In source order.
    std::vector<AnalysedCommand> commands;
    /// In source order.
    std::vector<AnalysedUse> uses;
    /// Of the script, its commands and its uses, in source order.
    std::vector<Diagnostic> diagnostics;

    AnalysedEntry const& at(EntryReference const& reference) const {
        return commands.at(reference.command).entries.at(reference.entry);
    }

    /// The argument from which an entry comes.
    SourceRange const& rangeOf(EntryReference const& reference) const {
        return commands.at(reference.command).command.arguments.at(at(reference).argument).range;
    }
};

/// A note in words, with a place `{1}` for its argument, which belongs to the file.
struct NoteInWords {
    std::string_view words;
    std::string_view argument;
    SourceRange range;
};

NoteInWords describe(AnalysedFile const& file, Note const& note);

/// How a file is analysed.
struct AnalysisOptions {
    /// Lines are parsed only: they need not belong together, so they are no one's scope.
    SourceSyntax syntax = SourceSyntax::Script;
    lf::import::Behavior behavior = lf::import::Behavior::FollowFeatureSwitch;
    /// Whether scopes get a view.
    bool viewsScopes = false;
    /// Whether imports that no use reaches, or that repeat another, are worth a warning.
    bool warnsOfUnusedImports = false;
};

/// Reads \p source, parses its commands, puts what they import into the lists of their scopes, and
/// looks the used names up.
AnalysedFile analyse(SourceFile source, AnalysisOptions const& options);

} // namespace explorer
