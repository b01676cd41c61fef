// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A problem at a place of a source file, of the library's finding or of the script reader's.

#include <import_explorer/source_file.hpp>

#include <import/messages.hpp>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

/// Names an entry of a file.
struct EntryReference {
    /// Position in AnalysedFile::commands.
    std::size_t command = 0;
    /// Position in AnalysedCommand::entries.
    std::size_t entry = 0;

    friend bool operator==(EntryReference const&, EntryReference const&) = default;
};

/// Points at an import that a problem is about. The entry has the text, however many problems are
/// about it.
struct Note {
    enum class Kind {
        ConflictsWith,
        IsMeant,
        Repeats,
    };

    Kind kind = Kind::ConflictsWith;
    EntryReference entry;
};

/// A remedy that the program can apply: the import is removed, or gets another alias.
struct Fix {
    EntryReference entry;
    /// Empty if the import is to be removed.
    std::string alias;
};

/// What the explorer finds itself.
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

/// The name of \p finding, which is like a key of the library.
std::string_view toText(Finding finding) noexcept;

/// A problem with the text that tells it.
struct Diagnostic {
    lf::import::Severity severity = lf::import::Severity::Error;
    /// The library's message key; empty for a problem of the explorer's own finding.
    std::string key;
    /// The text, with places `{1}`, `{2}` for the arguments.
    std::string_view words;
    /// In UTF-8.
    std::vector<std::string> arguments;
    /// What the caret points at.
    SourceRange range;
    /// The command that it is about, as an index among the file's commands.
    std::optional<std::size_t> command;
    /// The argument of that command.
    std::optional<std::size_t> argument;
    std::optional<Note> note;
    /// What it is, where it has no key.
    Finding finding = Finding::ScriptProblem;
    std::optional<Fix> fix = std::nullopt;
};

/// The diagnostics of both, in source order, those of \p first before others at the same place.
/// Each must be in source order.
std::vector<Diagnostic> mergeInSourceOrder(std::vector<Diagnostic> first,
                                           std::vector<Diagnostic> second);

} // namespace explorer
