// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The report for machines: one JSON document.

#include <import_explorer/report.hpp>

#include <memory>

namespace explorer {

/// Raised with every change that could break a reader of the document.
inline constexpr int jsonSchemaVersion = 1;

/// Collects the document, which is written at the end, in UTF-8. The same input always gives the
/// same bytes: keys have a fixed order, and nothing depends on when or how fast it was written.
/// What is not UTF-8 in the name of a file is replaced by U+FFFD.
class JsonReport final : public IReport {
  public:
    explicit JsonReport(bool packageImports);
    ~JsonReport() override;

    std::string add(AnalysedFile const& file) override;
    std::string add(LoadFailure const& failure) override;
    std::string finish(Summary const& summary, std::chrono::duration<double> time) override;

  private:
    struct Document;
    std::unique_ptr<Document> document;
};

} // namespace explorer
