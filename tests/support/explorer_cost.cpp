// SPDX-License-Identifier: BSL-1.0
#include <support/explorer_cost.hpp>

#include <support/counted_memory.hpp>

#include <import_explorer/analysis.hpp>
#include <import_explorer/edits.hpp>
#include <import_explorer/json_report.hpp>
#include <import_explorer/sarif_report.hpp>
#include <import_explorer/source_file.hpp>
#include <import_explorer/summary.hpp>
#include <import_explorer/text_report.hpp>

#include <chrono>
#include <memory>
#include <string_view>
#include <utility>
#include <variant>

namespace support {

namespace {

using namespace explorer;
using lf::import::Behavior;

struct CountingSink final : ITextSink {
    void write(std::string_view text) override { size += text.size(); }

    std::size_t size = 0;
};

std::unique_ptr<IReport> createReport(ITextSink& sink, KindOfReport const& kind) {
    if (kind.format == KindOfReport::Format::Json) {
        return createJsonReport(sink, kind.hasPackageImports,
                                kind.hasScopes ? ScopeDetail::ImportsAndView
                                               : ScopeDetail::Imports);
    }
    if (kind.format == KindOfReport::Format::Sarif) {
        return createSarifReport(sink);
    }
    return std::make_unique<TextReport>(sink, Style(true), Detail::Everything,
                                        kind.hasScopes ? ScopeDrawing::Drawn
                                                       : ScopeDrawing::Omitted);
}

} // namespace

std::vector<KindOfReport> const kindsOfReport{
    {"--unused", KindOfReport::Format::Text, false, false, true},
    drawnReport,
    {"--unused --scopes --json", KindOfReport::Format::Json, true, false, true},
    {"--unused --format sarif", KindOfReport::Format::Sarif, false, false, true},
    {"--unused --scopes --packages off", KindOfReport::Format::Text, true, false, false},
    {"--unused --scopes --packages off --json", KindOfReport::Format::Json, true, false, false},
    {"--lines", KindOfReport::Format::Text, false, true, true},
    {"--lines --json", KindOfReport::Format::Json, false, true, true},
};

ExplorerCost costOf(std::string const& script, KindOfReport const& kind) {
    CountingSink sink;
    MemoryMeter const meter;
    std::unique_ptr<IReport> const report = createReport(sink, kind);
    Summary summary;
    auto const finish = [&](auto const& what) {
        summary.count(what);
        report->add(what);
        report->finish(summary, std::chrono::duration<double>(1));
    };
    auto loaded = makeSourceFile("script.import", script);
    if (auto const* failure = std::get_if<LoadFailure>(&loaded)) {
        finish(*failure);
    } else {
        auto& source = std::get<SourceFile>(loaded);
        AnalysisOptions const how{kind.readsLines ? SourceSyntax::Lines : SourceSyntax::Script,
                                  kind.hasPackageImports ? Behavior::WithPackageImports
                                                         : Behavior::WithoutPackageImports,
                                  kind.hasScopes, !kind.readsLines};
        finish(kind.appliesFixes ? analyseAndFix(std::move(source), how).file
                                 : analyse(std::move(source), how));
    }
    return {sink.size, meter.peak()};
}

} // namespace support
