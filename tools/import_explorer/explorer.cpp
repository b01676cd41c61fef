// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/explorer.hpp>

#include <import_explorer/analysis.hpp>
#include <import_explorer/edits.hpp>
#include <import_explorer/file_replacement.hpp>
#include <import_explorer/file_walker.hpp>
#include <import_explorer/json_report.hpp>
#include <import_explorer/progress.hpp>
#include <import_explorer/sarif_report.hpp>
#include <import_explorer/source_file.hpp>
#include <import_explorer/summary.hpp>
#include <import_explorer/text_report.hpp>

#include <lf/features/package_imports.hpp>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace explorer {

namespace {

using lf::import::Behavior;

std::string_view environment(char const* name) {
    // No thread modifies the environment. NOLINTNEXTLINE(concurrency-mt-unsafe)
    char const* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool isDumb() {
    return environment("TERM") == "dumb";
}

bool isColourWanted(Output const& output) {
    return output.isTerminal() && environment("NO_COLOR").empty() && !isDumb();
}

std::unique_ptr<IReport> makeReport(Options const& options, Output& output) {
    if (options.format == ReportFormat::Json) {
        bool const packageImports = options.behavior == Behavior::FollowFeatureSwitch
                                        ? lf::features::isPackageImportsFeatureOn()
                                        : options.behavior == Behavior::WithPackageImports;
        return createJsonReport(output, packageImports,
                                options.showsScopes ? ScopeDetail::ImportsAndView
                                                    : ScopeDetail::Imports);
    }
    if (options.format == ReportFormat::Sarif) {
        return createSarifReport(output);
    }
    bool const isColoured = isColourWanted(output);
    if (isColoured) {
        output.resetColoursOnInterrupt();
    }
    return std::make_unique<TextReport>(
        output, Style(isColoured), options.isQuiet ? Detail::DiagnosticsOnly : Detail::Everything,
        options.showsScopes ? ScopeDrawing::Drawn : ScopeDrawing::Omitted);
}

std::string const& nameOf(FoundFile const& found) {
    auto const* failure = std::get_if<LoadFailure>(&found);
    return failure != nullptr ? failure->name : std::get<std::string>(found);
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
        Progress progress(terminal, files.size(), isDumb() ? Progress::never : Progress::patience);
        for (std::size_t index = 0; index < files.size(); ++index) {
            if (auto const* path = std::get_if<std::string>(&files[index])) {
                progress.show(index, *path);
            }
            read(files[index], progress);
        }
        progress.erase();
        report->finish(summary, std::chrono::steady_clock::now() - start);
        output.flush();
    }

    ExitStatus status() const noexcept {
        if (isOutOfMemory) {
            return ExitStatus::OutOfMemory;
        }
        return summary.errors > 0 ? ExitStatus::ErrorsFound : ExitStatus::Success;
    }

  private:
    /// If memory runs out for one file, the reports on the others are still written.
    void read(FoundFile const& found, Progress& progress) {
        std::variant<AnalysedFile, LoadFailure> read = LoadFailure();
        try {
            read = analyse(found);
        } catch (std::bad_alloc const&) {
            isOutOfMemory = true;
            read = LoadFailure{nameOf(found), "out of memory", std::nullopt};
        }
        // The report and the progress line may share a terminal.
        progress.erase();
        std::visit(
            [this](auto const& what) {
                summary.count(what);
                report->add(what);
            },
            read);
        if (output.isTerminal() || isOutOfMemory) {
            output.flush();
        }
    }

    std::variant<AnalysedFile, LoadFailure> analyse(FoundFile const& found) {
        auto loaded = load(found);
        if (auto* failure = std::get_if<LoadFailure>(&loaded)) {
            return std::move(*failure);
        }
        auto& source = std::get<SourceFile>(loaded);
        AnalysisOptions const how{options.syntax, options.behavior, options.showsScopes,
                                  options.showsUnusedImports};
        return options.appliesFixes ? fix(std::move(source), how)
                                    : explorer::analyse(std::move(source), how);
    }

    /// The file after all fixes.
    std::variant<AnalysedFile, LoadFailure> fix(SourceFile source, AnalysisOptions const& how) {
        std::string const before(source.text());
        FixedFile fixed = analyseAndFix(std::move(source), how);
        if (fixed.fixes > 0) {
            SourceFile const& after = fixed.file.source;
            if (auto obstacle = replaceFile(after.name(), before, after.text())) {
                return LoadFailure{after.name(), "cannot fix: " + *obstacle, std::nullopt};
            }
            summary.fixes += fixed.fixes;
        }
        return std::move(fixed.file);
    }

    Options const& options;
    Output& output;
    Output& terminal;
    std::unique_ptr<IReport> report;
    Summary summary;
    bool isOutOfMemory = false;
};

} // namespace

ExitStatus explore(Options const& options, Output& output, Output& terminal) {
    lf::features::setPackageImportsFeature(options.isFeatureOn);
    Run run(options, output, terminal);
    try {
        run.readAll();
    } catch (OutputClosed const&) {
        // The reader has seen enough, which is not an error.
    } catch (std::bad_alloc const&) {
        output.flush();
        throw;
    }
    return run.status();
}

} // namespace explorer
