// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Interface of all report formats.

#include <import_explorer/analysis.hpp>
#include <import_explorer/source_file.hpp>
#include <import_explorer/summary.hpp>
#include <import_explorer/text_sink.hpp>

#include <chrono>

namespace explorer {

/// A report on a run, written file by file to the sink that it was created with.
class IReport {
  public:
    IReport() = default;
    IReport(IReport const&) = delete;
    IReport& operator=(IReport const&) = delete;
    virtual ~IReport() = default;

    virtual void add(AnalysedFile const& file) = 0;
    virtual void add(LoadFailure const& failure) = 0;
    virtual void finish(Summary const& summary, std::chrono::duration<double> time) = 0;
};

} // namespace explorer
