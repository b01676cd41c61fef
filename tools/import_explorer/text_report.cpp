// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/text_report.hpp>

#include <import_explorer/caret.hpp>
#include <import_explorer/display_width.hpp>
#include <import_explorer/fixes.hpp>
#include <import_explorer/scope_tree.hpp>
#include <import_explorer/table.hpp>

#include <host/catalogue.hpp>

#include <algorithm>
#include <array>
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

/// Limit for the source excerpts shown for one line.
constexpr std::size_t mostExcerptsOfALine = 10;

std::string nameForDisplay(std::string const& fileName) {
    return displayText(fileName, std::numeric_limits<std::size_t>::max()).text;
}

std::string alignRight(std::string text, std::size_t width) {
    return text.insert(0, width - std::min(width, text.size()), ' ');
}

/// `1 error`, `2 errors`
std::string countOf(std::size_t number, std::string_view singular, std::string_view plural) {
    return std::to_string(number).append(" ").append(number == 1 ? singular : plural);
}

template <typename Arguments>
std::string fill(std::string_view words, Arguments const& arguments) {
    std::vector<std::string> shown;
    shown.reserve(std::size(arguments));
    for (std::string_view const argument : arguments) {
        shown.push_back(displayText(argument, widthOfArguments).text);
    }
    return lf::import::host::fillPlaceholders(words, shown);
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

Cell labelledCell(std::string_view label, std::optional<std::string> const& text) {
    return text ? makeCell(*text, std::nullopt, label) : Cell{};
}

/// As wide as the longest kind, so that the columns of all commands align.
Cell kindCell(EntryKind kind) {
    std::string text(toText(kind));
    text.resize(toText(EntryKind::Wildcard).size(), ' ');
    return makeCell(text, Role::Kind);
}

/// Writes the report on one file, with a margin of constant width.
class FileReport {
  public:
    FileReport(AnalysedFile const& analysedFile, Style chosenStyle, ITextSink& target)
        : file(analysedFile),
          style(chosenStyle),
          sink(target),
          name(nameForDisplay(analysedFile.source.name())),
          marginWidth(
              std::max<std::size_t>(4, std::to_string(analysedFile.source.numberOfLines()).size())),
          diagnostic(analysedFile.diagnostics.begin()) {}

    void writeEverything() {
        if (file.commands.empty() && file.uses.empty() && file.diagnostics.empty()) {
            return;
        }
        sink.write(style.apply(Role::Strong, name) + "\n");
        auto use = file.uses.begin();
        for (AnalysedCommand const& analysed : file.commands) {
            for (; use != file.uses.end() && isBefore(*use, analysed); ++use) {
                write(*use);
            }
            write(analysed);
        }
        std::for_each(use, file.uses.end(), [this](AnalysedUse const& later) { write(later); });
        writeDiagnostics();
        sink.write("\n");
    }

    void writeDiagnostics() { writeDiagnosticsBefore(std::numeric_limits<std::size_t>::max()); }

  private:
    static bool isBefore(AnalysedUse const& use, AnalysedCommand const& analysed) {
        return use.use.name.range.begin < analysed.command.range.begin;
    }

    /// Whether all imports of a command were refused; then only its diagnostics are shown.
    bool isRefused(AnalysedCommand const& analysed) const {
        if (analysed.entries.empty()) {
            auto const index = static_cast<std::size_t>(&analysed - file.commands.data());
            return diagnostic != file.diagnostics.end() && diagnostic->command == index;
        }
        return std::all_of(
            analysed.entries.begin(), analysed.entries.end(),
            [](AnalysedEntry const& entry) { return entry.outcome == EntryOutcome::Refused; });
    }

    void writeDiagnosticsBefore(std::size_t offset) {
        for (; diagnostic != file.diagnostics.end() && diagnostic->range.begin < offset;
             ++diagnostic) {
            write(*diagnostic);
        }
    }

    void write(AnalysedCommand const& analysed) {
        SourceRange const& range = analysed.command.range;
        writeDiagnosticsBefore(range.begin);
        if (isRefused(analysed)) {
            return;
        }
        writeStatement(range.line, file.source.text(range));
        if (analysed.entries.empty()) {
            writeLine({}, style.apply(Role::Faint, "  nothing to import"));
        }
        Table table;
        for (AnalysedEntry const& entry : analysed.entries) {
            table.measure(makeRow(entry));
        }
        for (AnalysedEntry const& entry : analysed.entries) {
            writeLine({}, "  " + table.layOut(makeRow(entry), style));
        }
    }

    Row makeRow(AnalysedEntry const& entry) const {
        return {makeCell("[" + std::to_string(entry.argument) + "]", Role::Faint),
                kindCell(entry.kind),
                makeCell(entry.text),
                labelledCell("introduces ", entry.introducedName),
                labelledCell("root ", entry.rootElement),
                makeCell(describeOutcome(entry), Role::Faint)};
    }

    /// Empty for an entry that was simply added.
    std::string describeOutcome(AnalysedEntry const& entry) const {
        switch (entry.outcome) {
        case EntryOutcome::Repeated:
            return "repeats line " + std::to_string(file.rangeOf(entry.earlier.value()).line);
        case EntryOutcome::Refused:
            return "refused";
        case EntryOutcome::Parsed:
        case EntryOutcome::Added:
            break;
        }
        return {};
    }

    void write(AnalysedUse const& analysed) {
        SourceRange const& range = analysed.use.name.range;
        writeDiagnosticsBefore(range.begin);
        if (analysed.isUnknown()) {
            return;
        }
        writeStatement(range.line, "use " + std::string(file.source.text(range)));
        std::vector<Row> rows;
        bool const isWhole = analysed.name == analysed.use.name.text;
        std::string const subject = isWhole ? "" : analysed.name + " ";
        for (EntryReference const& entry : analysed.imports) {
            rows.push_back(makeAnswer(subject + (rows.empty() ? "is" : "also"), entry));
        }
        for (EntryReference const& entry : analysed.wildcards.listed) {
            rows.push_back(makeAnswer("maybe", entry));
        }
        writeRows(rows);
        if (analysed.wildcards.omitted > 0) {
            writeLine({}, style.apply(Role::Faint, "  maybe  further " +
                                                       std::to_string(analysed.wildcards.omitted) +
                                                       " wildcards, not shown"));
        }
        if (rows.empty()) {
            writeLine({}, style.apply(Role::Faint, "  written in full: needs no import"));
        }
    }

    Row makeAnswer(std::string_view answer, EntryReference const& reference) const {
        AnalysedEntry const& entry = file.at(reference);
        return {makeCell(answer, Role::Faint), kindCell(entry.kind), makeCell(entry.text),
                makeCell(placeOf(file, reference), Role::Faint)};
    }

    void writeStatement(std::size_t line, std::string_view text) {
        writeLine(std::to_string(line), displayText(withoutTabs(text), widthOfCommands).text);
    }

    void writeRows(std::vector<Row> const& rows) {
        Table table;
        for (Row const& row : rows) {
            table.measure(row);
        }
        for (Row const& row : rows) {
            writeLine({}, "  " + table.layOut(row, style));
        }
    }

    void write(Diagnostic const& what) {
        bool const isError = what.severity == lf::import::Severity::Error;
        Role const role = isError ? Role::Error : Role::Warning;
        std::string words = style.apply(Role::Strong, fill(what.words, what.arguments));
        if (!what.key.empty()) {
            words += " [" + what.key + "]";
        }
        excerpts = what.range.line == lineOfExcerpts ? excerpts + 1 : 1;
        lineOfExcerpts = what.range.line;
        if (excerpts == mostExcerptsOfALine + 1) {
            writeLine({}, style.apply(Role::Faint, "the line of further problems is not shown"));
        }
        writeMessage(what.range, style.apply(role, isError ? "error:" : "warning:"), words);
        writeExcerpt(what.range, role);
        if (what.note) {
            NoteInWords const note = describe(file, *what.note);
            writeMessage(note.range, style.apply(Role::Note, "note:"),
                         fill(note.words, std::array{note.argument}));
            writeExcerpt(note.range, Role::Note);
        }
        if (what.fix) {
            writeLine({}, style.apply(Role::Note, "fix:") + " " +
                              fill(wordsFor(*what.fix), std::array{what.fix->alias}));
        }
    }

    void writeMessage(SourceRange const& range, std::string const& severity,
                      std::string const& words) {
        std::string const place =
            name + ":" + std::to_string(range.line) + ":" + std::to_string(range.column) + ":";
        sink.write(style.apply(Role::Strong, place) + " " + severity + " " + words + "\n");
    }

    /// Shows no further excerpts of a line with many problems, since the line can be long.
    void writeExcerpt(SourceRange const& range, Role role) {
        if (excerpts > mostExcerptsOfALine) {
            return;
        }
        std::size_t const lineBegin = file.source.lineBegin(range.line);
        Excerpt const excerpt = makeExcerpt(file.source.line(range.line), range.begin - lineBegin,
                                            range.end - lineBegin);
        writeLine(std::to_string(range.line), excerpt.source);
        writeLine({}, style.apply(role, excerpt.caret));
    }

    void writeLine(std::string const& margin, std::string const& text) {
        sink.write(style.apply(Role::Faint, alignRight(margin, marginWidth) + " |") +
                   withoutTrailingSpaces(" " + text) + "\n");
    }

    AnalysedFile const& file;
    Style style;
    ITextSink& sink;
    std::string name;
    std::size_t marginWidth;
    std::vector<Diagnostic>::const_iterator diagnostic;
    std::size_t lineOfExcerpts = 0;
    std::size_t excerpts = 0;
};

std::string inSeconds(std::chrono::duration<double> time) {
    std::ostringstream stream;
    stream << std::fixed << std::setprecision(3) << time.count() << " s";
    return std::move(stream).str();
}

} // namespace

void TextReport::add(AnalysedFile const& file) {
    FileReport report(file, style, sink);
    if (detail == Detail::Everything) {
        report.writeEverything();
    } else {
        report.writeDiagnostics();
    }
    if (scopeDrawing == ScopeDrawing::Drawn) {
        drawScopes(file, style, sink);
        sink.write("\n");
    }
}

void TextReport::add(LoadFailure const& failure) {
    std::string const place = nameForDisplay(failure.name) + ":";
    std::string words = failure.reason;
    if (failure.offset) {
        words += " at offset " + std::to_string(*failure.offset);
    }
    sink.write(style.apply(Role::Strong, place) + " " + style.apply(Role::Error, "error:") + " " +
               style.apply(Role::Strong, words) + "\n");
}

void TextReport::finish(Summary const& summary, std::chrono::duration<double> time) {
    std::string const errors = countOf(summary.errors, "error", "errors");
    std::string const warnings = countOf(summary.warnings, "warning", "warnings");
    sink.write(countOf(summary.files, "file", "files") + ", " +
               countOf(summary.commands, "command", "commands") + ": " +
               countOf(summary.entries(), "entry", "entries") + " (" +
               countOf(summary.names, "name", "names") + ", " +
               countOf(summary.wildcards, "wildcard", "wildcards") + ", " +
               countOf(summary.packages, "package", "packages") + "), " +
               (summary.errors > 0 ? style.apply(Role::Error, errors) : errors) + ", " +
               (summary.warnings > 0 ? style.apply(Role::Warning, warnings) : warnings) + ", " +
               (summary.fixes > 0 ? countOf(summary.fixes, "fix", "fixes") + " applied, " : "") +
               inSeconds(time) + "\n");
}

} // namespace explorer
