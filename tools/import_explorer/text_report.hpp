// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The report for people: commands with their entries, uses of names, diagnostics as compilers show
/// them.

#include <import_explorer/report.hpp>
#include <import_explorer/style.hpp>

namespace explorer {

/// Whether a report shows what was imported, or only what is wrong.
enum class Detail {
    Everything,
    DiagnosticsOnly,
};

/// Whether a report draws the scopes of each file.
enum class ScopeDrawing {
    Omitted,
    Drawn,
};

/// Writes file by file; a summary line closes the report.
class TextReport final : public IReport {
  public:
    TextReport(Style chosenStyle, Detail chosenDetail, ScopeDrawing chosenDrawing) noexcept
        : style(chosenStyle), detail(chosenDetail), scopeDrawing(chosenDrawing) {}

    std::string add(AnalysedFile const& file) override;
    std::string add(LoadFailure const& failure) override;
    std::string finish(Summary const& summary, std::chrono::duration<double> time) override;

  private:
    Style style;
    Detail detail;
    ScopeDrawing scopeDrawing;
};

} // namespace explorer
