// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/explorer.hpp>

#include <import_explorer/analysis.hpp>
#include <import_explorer/file_walker.hpp>
#include <import_explorer/json_report.hpp>
#include <import_explorer/progress.hpp>
#include <import_explorer/source_file.hpp>
#include <import_explorer/summary.hpp>
#include <import_explorer/text_report.hpp>

#include <lf/features/package_imports.hpp>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace explorer {

namespace {

using lf::import::Behavior;

std::string_view environment(char const* name) {
    // Nothing in this program changes the environment. NOLINTNEXTLINE(concurrency-mt-unsafe)
    char const* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool isColourWanted(Output const& output) {
    return output.isTerminal() && environment("NO_COLOR").empty() && environment("TERM") != "dumb";
}

std::unique_ptr<IReport> makeReport(Options const& options, Output const& output) {
    if (options.format == ReportFormat::Json) {
        bool const packageImports = options.behavior == Behavior::FollowFeatureSwitch
                                        ? lf::features::isPackageImportsFeatureOn()
                                        : options.behavior == Behavior::WithPackageImports;
        return createJsonReport(packageImports, options.showsScopes ? ScopeDetail::ImportsAndView
                                                                    : ScopeDetail::Imports);
    }
    return std::make_unique<TextReport>(
        Style(isColourWanted(output)),
        options.isQuiet ? Detail::DiagnosticsOnly : Detail::Everything,
        options.showsScopes ? ScopeDrawing::Drawn : ScopeDrawing::Omitted);
}

std::variant<SourceFile, LoadFailure> load(FoundFile const& found) {
    if (auto const* failure = std::get_if<LoadFailure>(&found)) {
        return *failure;
    }
    return loadSourceFile(std::get<std::string>(found));
}

class Run {
  public:
    Run(Options const& chosenOptions, Output& reportOutput, Output& progressTerminal)
        : options(chosenOptions),
          output(reportOutput),
          terminal(progressTerminal),
          report(makeReport(chosenOptions, reportOutput)) {}

    void readAll() {
        auto const start = std::chrono::steady_clock::now();
        std::vector<FoundFile> const files =
            findFiles(options.paths, options.syntax == SourceSyntax::Lines ? FileFilter::AllFiles
                                                                           : FileFilter::Scripts);
        Progress progress(terminal, files.size());
        for (std::size_t index = 0; index < files.size(); ++index) {
            if (auto const* path = std::get_if<std::string>(&files[index])) {
                progress.show(index, *path);
            }
            write(read(files[index]), progress);
        }
        progress.erase();
        output.write(report->finish(summary, std::chrono::steady_clock::now() - start));
        output.flush();
    }

    ExitStatus status() const noexcept {
        return summary.errors > 0 ? ExitStatus::ErrorsFound : ExitStatus::Success;
    }

  private:
    std::string read(FoundFile const& found) {
        auto loaded = load(found);
        if (auto const* failure = std::get_if<LoadFailure>(&loaded)) {
            summary.count(*failure);
            return report->add(*failure);
        }
        AnalysedFile const file = analyse(
            std::move(std::get<SourceFile>(loaded)),
            {options.syntax, options.behavior, options.showsScopes, options.showsUnusedImports});
        summary.count(file);
        return report->add(file);
    }

    void write(std::string const& text, Progress& progress) {
        if (text.empty()) {
            return;
        }
        if (!output.isTerminal()) {
            output.write(text);
            return;
        }
        // Report and progress share the terminal.
        progress.erase();
        output.write(text);
        output.flush();
    }

    Options const& options;
    Output& output;
    Output& terminal;
    std::unique_ptr<IReport> report;
    Summary summary;
};

} // namespace

ExitStatus explore(Options const& options, Output& output, Output& terminal) {
    lf::features::setPackageImportsFeature(options.isFeatureOn);
    Run run(options, output, terminal);
    try {
        run.readAll();
    } catch (OutputClosed const&) {
        // Who asked for the report has seen enough of it.
    }
    return run.status();
}

} // namespace explorer
