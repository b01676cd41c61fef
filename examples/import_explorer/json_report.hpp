// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The report for machines: one JSON document.
///
/// The document has `schemaVersion`, `packageImports` (whether commands may import packages),
/// `files`, `failures` (what could not be read) and `summary`. Places are given by `line` and
/// `column` (from 1, in characters) and by `offset` and `length` (in bytes). References are objects
/// `{"command", "entry"}`: positions in the file's `commands` and in that command's `entries`;
/// other positions count from 0 as well. A file has
/// - `name`;
/// - `scopes`: the whole file first, each with its `name` and `parent` (a position; null for the
///   whole file), its place, and `imports`, the references to what its list holds. On request also
///   `inherited`, references to what it sees of the scopes around it when the file has been read,
///   and `hidden`, what its parent sees and itself hides: references `entry` and `by`. Both are
///   objects with `listed`, the first 100, and `omitted`, the number of the others; both are null
///   within more than 64 scopes;
/// - `commands`: each with its `scope` (a position), whether it is `dynamic`, its place, its
///   `arguments` and its `entries`. An entry has its `kind` (name, wildcard, package), `text`,
///   `introducedName` (null for a wildcard), `rootElement` (null for a package), the position of
///   its `argument`, its `outcome` (parsed: of lines, which have no list; added; repeated: the list
///   had it already; refused), a reference to the `earlier` entry that it repeats or conflicts with
///   (or null), and whether it is `used`;
/// - `uses`: each with its `scope`, its `text` and place, the `name` that was looked up, references
///   to the `imports` that introduce it, the nearest first, and to the `wildcards` that may supply
///   what nothing introduces (`listed` and `omitted`), whether it is `unknown`, and a reference to
///   the import of a similar name as `suggestion` (or null);
/// - `diagnostics`: each with its `severity` (error, warning), the library's message `key` (or
///   null), the `message` and the `messageArguments` in it, its place, the positions of its
///   `command` and `argument` (or null), and a `note` on another place: `message`,
///   `messageArguments` and the place (or null).

#include <import_explorer/report.hpp>

#include <memory>

namespace explorer {

/// Raised with every change that could break a reader of the document.
inline constexpr int jsonSchemaVersion = 2;

/// What the document says of scopes.
enum class ScopeDetail {
    Imports,
    /// Also what they inherit and hide.
    ImportsAndView,
};

/// Creates a report that collects the document, in UTF-8, and returns it at the end. The same input
/// always gives the same bytes: keys have a fixed order, and nothing depends on when or how fast it
/// was written. What is not UTF-8 in the name of a file is replaced by U+FFFD.
std::unique_ptr<IReport> createJsonReport(bool packageImports, ScopeDetail detail);

} // namespace explorer
