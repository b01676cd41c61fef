// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The report for people: commands with their entries, uses of names, and diagnostics in the style
/// of compilers.

#include <import_explorer/report.hpp>
#include <import_explorer/style.hpp>

namespace explorer {

/// Whether a report also shows imports or only problems.
enum class Detail {
    Everything,
    DiagnosticsOnly,
};

/// Whether a report draws the scope tree of each file.
enum class ScopeDrawing {
    Omitted,
    Drawn,
};

/// Writes the report file by file, followed by a summary line.
class TextReport final : public IReport {
  public:
    TextReport(ITextSink& target, Style chosenStyle, Detail chosenDetail,
               ScopeDrawing chosenDrawing) noexcept
        : sink(target), style(chosenStyle), detail(chosenDetail), scopeDrawing(chosenDrawing) {}

    void add(AnalysedFile const& file) override;
    void add(LoadFailure const& failure) override;
    void finish(Summary const& summary, std::chrono::duration<double> time) override;

  private:
    ITextSink& sink;
    Style style;
    Detail detail;
    ScopeDrawing scopeDrawing;
};

} // namespace explorer
