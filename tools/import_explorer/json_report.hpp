// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The report for machines: one JSON document, as report.schema.json and docs/explorer_json.md say,
/// which change with it.

#include <import_explorer/report.hpp>

#include <memory>

namespace explorer {

/// Raised with every change that could break a reader of the document.
inline constexpr int jsonSchemaVersion = 3;

/// What the document says of scopes.
enum class ScopeDetail {
    Imports,
    /// Also what they inherit and hide.
    ImportsAndView,
};

/// Creates a report that writes the document, in UTF-8, file by file. The same input always gives
/// the same bytes: keys have a fixed order, and nothing depends on when or how fast it was written.
/// What is not UTF-8 in the name of a file is replaced by U+FFFD.
std::unique_ptr<IReport> createJsonReport(ITextSink& sink, bool packageImports, ScopeDetail detail);

} // namespace explorer
