// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Lets GoogleTest print what the library and the host kit return, as users would write it. Valid
/// entries have operator<<, which GoogleTest uses.
///
/// Include this in each file whose tests print these types. Your tests must link GoogleTest
/// themselves.

#include <host_testing/describe.hpp>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>

namespace resource_core {

/// As lf::import::host_testing::describe.
inline void PrintTo(BaseMsgID const& message, std::ostream* stream) {
    *stream << lf::import::host_testing::describe(message);
}

/// As its message.
inline void PrintTo(GenericMsgIDHolder const& holder, std::ostream* stream) {
    *stream << lf::import::host_testing::describe(holder);
}

} // namespace resource_core

namespace lf::import {

/// As its message.
inline void PrintTo(InvalidImportEntry const& entry, std::ostream* stream) {
    *stream << host_testing::describe(entry);
}

/// An alternative of ParsedImportEntry: the argument and the entry.
template <typename Entry>

requires(host::ValidEntry<Entry> || std::same_as<Entry, InvalidImportEntry>) void PrintTo(
    std::pair<Entry, ImportArgumentIndex> const& parsed, std::ostream* stream) {
    *stream << host_testing::describe(parsed);
}

/// Only the key.
inline void PrintTo(MessageKey const& message, std::ostream* stream) {
    *stream << message.key;
}

/// `warning` or `error`.
inline void PrintTo(Severity severity, std::ostream* stream) {
    *stream << (severity == Severity::Error ? "error" : "warning");
}

/// `this list` or `an ancestor`.
inline void PrintTo(EntryOrigin origin, std::ostream* stream) {
    *stream << (origin == EntryOrigin::ThisList ? "this list" : "an ancestor");
}

/// The entry and where it was found: `m of an ancestor`.
inline void PrintTo(FoundImportEntry const& found, std::ostream* stream) {
    *stream << found.entry << " of " << testing::PrintToString(found.origin);
}

/// The argument and where it was found: `a.b of this list`.
inline void PrintTo(FoundFullyQualifiedName const& found, std::ostream* stream) {
    *stream << fl::i18n::ustring_to_utf8(found.rawArgument) << " of "
            << testing::PrintToString(found.origin);
}

/// The visible entries: `import list of a.b, c.* and m`.
inline void PrintTo(IImportList const& list, std::ostream* stream) {
    *stream << "import list of " << host_testing::joined(host_testing::describeVisible(list));
}

} // namespace lf::import

namespace lf::import::host {

/// The argument and the entry.
inline void PrintTo(CommandEntry const& found, std::ostream* stream) {
    *stream << host_testing::describe(found);
}

/// The argument and the message.
inline void PrintTo(CommandDiagnostic const& problem, std::ostream* stream) {
    *stream << host_testing::describe(problem);
}

/// `package`, `name` or `wildcard`.
inline void PrintTo(ImportKind kind, std::ostream* stream) {
    *stream << (kind == ImportKind::Package          ? "package"
                : kind == ImportKind::FullyQualified ? "name"
                                                     : "wildcard");
}

/// The entry and its place: `a.b at 7`.
template <typename Place>
void PrintTo(Import<Place> const& imported, std::ostream* stream) {
    *stream << toUtf8(imported.entry) << " at " << testing::PrintToString(imported.place);
}

/// The import and its distance: `a.b at 7, 2 scopes out`.
template <typename Place>
void PrintTo(ScopedImport<Place> const& scoped, std::ostream* stream) {
    PrintTo(*scoped.imported, stream);
    *stream << ", " << scoped.distance << " scopes out";
}

/// `stored a.b at 7`
template <typename Place>
void PrintTo(Stored<Place> const& stored, std::ostream* stream) {
    *stream << "stored ";
    PrintTo(*stored.imported, stream);
}

/// `repeats a.b at 7`
template <typename Place>
void PrintTo(Repeated<Place> const& repeated, std::ostream* stream) {
    *stream << "repeats ";
    if (repeated.earlier == nullptr) {
        *stream << "an import of a foreign list";
    } else {
        PrintTo(*repeated.earlier, stream);
    }
}

/// `refused: error PackageRedeclared("m"), against m at 7, 0 scopes out`
template <typename Place>
void PrintTo(Refused<Place> const& refused, std::ostream* stream) {
    *stream << "refused: " << host_testing::describe(refused.message);
    if (refused.conflict) {
        *stream << ", against ";
        PrintTo(*refused.conflict, stream);
    }
}

} // namespace lf::import::host
