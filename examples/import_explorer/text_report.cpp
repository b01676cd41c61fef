// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/text_report.hpp>

#include <import_explorer/caret.hpp>
#include <import_explorer/display_width.hpp>
#include <import_explorer/message_catalogue.hpp>

#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <limits>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

namespace explorer {

namespace {

constexpr std::size_t widthOfCommands = 100;
constexpr std::size_t widthOfArguments = 60;
constexpr std::size_t widthOfCells = 40;
constexpr std::size_t widthOfKinds = std::string_view("wildcard").size();

std::string nameForDisplay(std::string const& fileName) {
    return displayText(fileName, std::numeric_limits<std::size_t>::max()).text;
}

std::string toText(std::size_t number, std::size_t width) {
    std::string digits = std::to_string(number);
    return digits.insert(0, width - std::min(width, digits.size()), ' ');
}

/// `1 error`, `2 errors`
std::string countOf(std::size_t number, std::string_view singular, std::string_view plural) {
    return std::to_string(number).append(" ").append(number == 1 ? singular : plural);
}

std::string wordsOf(Diagnostic const& diagnostic) {
    std::vector<std::string> arguments;
    for (std::string const& argument : diagnostic.arguments) {
        arguments.push_back(displayText(argument, widthOfArguments).text);
    }
    return fillPlaces(diagnostic.words, arguments);
}

std::string withoutTrailingSpaces(std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::string withoutTabs(std::string_view text) {
    std::string result(text);
    std::replace(result.begin(), result.end(), '\t', ' ');
    return result;
}

std::string pad(DisplayedText const& cell, std::size_t width) {
    return cell.text + std::string(width - std::min(width, cell.width), ' ');
}

DisplayedText labelled(std::string const& label, std::optional<std::string> const& text) {
    if (!text) {
        return {};
    }
    DisplayedText const shown = displayText(*text, widthOfCells);
    return {label + shown.text, label.size() + shown.width};
}

/// What stands in the columns of an entry, in their order.
struct EntryRow {
    std::string position;
    DisplayedText kind;
    DisplayedText text;
    DisplayedText introducedName;
    DisplayedText rootElement;

    explicit EntryRow(AnalysedEntry const& entry)
        : position("[" + std::to_string(entry.argument) + "]"),
          kind(displayText(toText(entry.kind), widthOfKinds)),
          text(displayText(entry.text, widthOfCells)),
          introducedName(labelled("introduces ", entry.introducedName)),
          rootElement(labelled("root ", entry.rootElement)) {}
};

/// Writes the blocks of one file, which share their margin.
class FileReport {
  public:
    FileReport(AnalysedFile const& analysedFile, Style chosenStyle)
        : file(analysedFile),
          style(chosenStyle),
          name(nameForDisplay(analysedFile.source.name())),
          marginWidth(
              std::max<std::size_t>(4, std::to_string(analysedFile.source.numberOfLines()).size())),
          diagnostic(analysedFile.diagnostics.begin()) {}

    std::string writeEverything() && {
        if (file.commands.empty() && file.diagnostics.empty()) {
            return {};
        }
        report = style.apply(Role::Strong, name) + "\n";
        for (std::size_t index = 0; index < file.commands.size(); ++index) {
            AnalysedCommand const& analysed = file.commands[index];
            writeDiagnosticsBefore(analysed.command.range.begin);
            bool const isRefused = analysed.entries.empty() && isAboutCommand(index);
            if (!isRefused) {
                write(analysed);
            }
        }
        writeDiagnosticsBefore(std::numeric_limits<std::size_t>::max());
        return std::move(report) + "\n";
    }

    std::string writeDiagnostics() && {
        writeDiagnosticsBefore(std::numeric_limits<std::size_t>::max());
        return std::move(report);
    }

  private:
    bool isAboutCommand(std::size_t index) const {
        return diagnostic != file.diagnostics.end() && diagnostic->command == index;
    }

    void writeDiagnosticsBefore(std::size_t offset) {
        for (; diagnostic != file.diagnostics.end() && diagnostic->range.begin < offset;
             ++diagnostic) {
            write(*diagnostic);
        }
    }

    void write(AnalysedCommand const& analysed) {
        SourceRange const& range = analysed.command.range;
        std::string_view const text =
            file.source.line(range.line)
                .substr(range.begin - file.source.lineBegin(range.line), range.end - range.begin);
        writeLine(toText(range.line, marginWidth),
                  displayText(withoutTabs(text), widthOfCommands).text);
        if (analysed.entries.empty()) {
            writeLine({}, style.apply(Role::Faint, "  nothing to import"));
        }
        write(analysed.entries);
    }

    void write(std::vector<AnalysedEntry> const& entries) {
        std::vector<EntryRow> const rows(entries.begin(), entries.end());
        std::size_t textWidth = 0;
        std::size_t nameWidth = 0;
        for (EntryRow const& row : rows) {
            textWidth = std::max(textWidth, row.text.width);
            nameWidth = std::max(nameWidth, row.introducedName.width);
        }
        for (EntryRow const& row : rows) {
            writeLine({}, "  " + style.apply(Role::Faint, row.position) + " " +
                              style.apply(Role::Kind, pad(row.kind, widthOfKinds)) + "  " +
                              pad(row.text, textWidth) + "  " + pad(row.introducedName, nameWidth) +
                              "  " + row.rootElement.text);
        }
    }

    void write(Diagnostic const& what) {
        SourceRange const& range = what.range;
        bool const isError = what.severity == lf::import::Severity::Error;
        std::string const place =
            name + ":" + std::to_string(range.line) + ":" + std::to_string(range.column) + ":";
        report += style.apply(Role::Strong, place) + " " +
                  (isError ? style.apply(Role::Error, "error:")
                           : style.apply(Role::Warning, "warning:")) +
                  " " + style.apply(Role::Strong, wordsOf(what)) +
                  (what.key.empty() ? "" : " [" + what.key + "]") + "\n";
        std::size_t const lineBegin = file.source.lineBegin(range.line);
        Excerpt const excerpt = makeExcerpt(file.source.line(range.line), range.begin - lineBegin,
                                            range.end - lineBegin);
        writeLine(toText(range.line, marginWidth), excerpt.source);
        writeLine({}, style.apply(isError ? Role::Error : Role::Warning, excerpt.caret));
    }

    void writeLine(std::string const& margin, std::string const& text) {
        report += style.apply(Role::Faint, pad({margin, margin.size()}, marginWidth) + " |");
        report += withoutTrailingSpaces(" " + text) + "\n";
    }

    AnalysedFile const& file;
    Style style;
    std::string name;
    std::size_t marginWidth;
    std::vector<Diagnostic>::const_iterator diagnostic;
    std::string report;
};

std::string inSeconds(std::chrono::duration<double> time) {
    std::ostringstream stream;
    stream << std::fixed << std::setprecision(3) << time.count() << " s";
    return std::move(stream).str();
}

} // namespace

std::string TextReport::add(AnalysedFile const& file) {
    FileReport report(file, style);
    return detail == Detail::Everything ? std::move(report).writeEverything()
                                        : std::move(report).writeDiagnostics();
}

std::string TextReport::add(LoadFailure const& failure) {
    std::string const place = nameForDisplay(failure.name) + ":";
    std::string words = failure.reason;
    if (failure.offset) {
        words += " at offset " + std::to_string(*failure.offset);
    }
    return style.apply(Role::Strong, place) + " " + style.apply(Role::Error, "error:") + " " +
           style.apply(Role::Strong, words) + "\n";
}

std::string TextReport::finish(Summary const& summary, std::chrono::duration<double> time) {
    std::string const errors = countOf(summary.errors, "error", "errors");
    std::string const warnings = countOf(summary.warnings, "warning", "warnings");
    return countOf(summary.files, "file", "files") + ", " +
           countOf(summary.commands, "command", "commands") + ": " +
           countOf(summary.entries(), "entry", "entries") + " (" +
           countOf(summary.names, "name", "names") + ", " +
           countOf(summary.wildcards, "wildcard", "wildcards") + ", " +
           countOf(summary.packages, "package", "packages") + "), " +
           (summary.errors > 0 ? style.apply(Role::Error, errors) : errors) + ", " +
           (summary.warnings > 0 ? style.apply(Role::Warning, warnings) : warnings) + ", " +
           inSeconds(time) + "\n";
}

} // namespace explorer
