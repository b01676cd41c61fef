// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What the kinds of report have in common.

#include <import_explorer/analysis.hpp>
#include <import_explorer/source_file.hpp>
#include <import_explorer/summary.hpp>

#include <chrono>
#include <string>

namespace explorer {

/// A report on a run. Each operation returns the text by which the report grows, which may be
/// empty.
class IReport {
  public:
    IReport() = default;
    IReport(IReport const&) = delete;
    IReport& operator=(IReport const&) = delete;
    virtual ~IReport() = default;

    virtual std::string add(AnalysedFile const& file) = 0;
    virtual std::string add(LoadFailure const& failure) = 0;
    virtual std::string finish(Summary const& summary, std::chrono::duration<double> time) = 0;
};

} // namespace explorer
