// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The report for programs: one JSON document. report.schema.json and docs/explorer_json.md
/// describe it and must be changed together with it.

#include <import_explorer/report.hpp>

#include <memory>

namespace explorer {

/// Incremented with every incompatible change of the document.
inline constexpr int jsonSchemaVersion = 3;

/// What the document contains about scopes.
enum class ScopeDetail {
    Imports,
    /// Also the entries that they inherit and hide.
    ImportsAndView,
};

/// Creates a report that writes the document, in UTF-8, file by file. The same input always
/// produces the same bytes: keys have a fixed order, and there are no times. In file names, bytes
/// that are not UTF-8 are replaced by U+FFFD.
std::unique_ptr<IReport> createJsonReport(ITextSink& sink, bool packageImports, ScopeDetail detail);

} // namespace explorer
