// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The report for editors and code hosting: one SARIF 2.1.0 document.

#include <import_explorer/report.hpp>

#include <memory>

namespace explorer {

/// Creates a report that writes the document, in UTF-8, file by file. Each diagnostic is a result;
/// each file or folder that cannot be read is a notification. Texts are truncated as in the JSON
/// report.
std::unique_ptr<IReport> createSarifReport(ITextSink& sink);

} // namespace explorer
