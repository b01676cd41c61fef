// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A problem in a source file, reported by the library, the script reader or the explorer itself.

#include <import_explorer/source_file.hpp>

#include <import/messages.hpp>

#include <array>
#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

/// Identifies an entry of a file.
struct EntryReference {
    /// Index in AnalysedFile::commands.
    std::size_t command = 0;
    /// Index in AnalysedCommand::entries.
    std::size_t entry = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): there is no pointer
    friend auto operator<=>(EntryReference const&, EntryReference const&) = default;
};

/// Points at an import that a problem refers to. Refers to the entry instead of copying its text,
/// since many problems may refer to the same entry.
struct Note {
    enum class Kind {
        ConflictsWith,
        IsMeant,
        Repeats,
    };

    Kind kind = Kind::ConflictsWith;
    EntryReference entry;
};

/// A change that the explorer can apply: remove the import or give it another alias.
struct Fix {
    EntryReference entry;
    /// Empty to remove the import.
    std::string alias;
};

/// The kinds of problems that the explorer itself finds.
enum class Finding {
    ScriptProblem,
    UnknownName,
    UnusedImport,
    RepeatedImport,
    ScopeTooDeep,
};

inline constexpr std::array findings{Finding::ScriptProblem, Finding::UnknownName,
                                     Finding::UnusedImport, Finding::RepeatedImport,
                                     Finding::ScopeTooDeep};

/// The name of \p finding, used like a message key of the library.
std::string_view toText(Finding finding) noexcept;

/// A problem with its text.
struct Diagnostic {
    lf::import::Severity severity = lf::import::Severity::Error;
    /// The library's message key; empty for a problem that the explorer finds.
    std::string key;
    /// The text, with placeholders `{1}`, `{2}` for the arguments.
    std::string_view words;
    /// In UTF-8.
    std::vector<std::string> arguments;
    /// The range to underline.
    SourceRange range;
    /// Index of the command that it is about.
    std::optional<std::size_t> command;
    /// Index of the argument of that command.
    std::optional<std::size_t> argument;
    std::optional<Note> note;
    /// The kind of problem if it has no key.
    Finding finding = Finding::ScriptProblem;
    std::optional<Fix> fix = std::nullopt;
};

/// Merges two lists of diagnostics that are in source order. At equal places, \p first goes first.
std::vector<Diagnostic> mergeInSourceOrder(std::vector<Diagnostic> first,
                                           std::vector<Diagnostic> second);

} // namespace explorer
