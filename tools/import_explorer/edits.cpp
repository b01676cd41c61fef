// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/edits.hpp>

#include <import_explorer/utf8.hpp>

#include <algorithm>
#include <span>
#include <utility>

namespace explorer {

namespace {

constexpr std::string_view blanksOfALine = " \t\v\f";

/// A line of a file, to extend ranges in it.
class Line {
  public:
    Line(SourceFile const& source, std::size_t lineNumber)
        : text(source.line(lineNumber)),
          begin(source.lineBegin(lineNumber)),
          number(lineNumber),
          next(lineNumber < source.numberOfLines() ? source.lineBegin(lineNumber + 1)
                                                   : source.size()) {}

    /// \p range and the blanks before it.
    SourceRange withBlanksBefore(SourceRange const& range) const {
        std::string_view const before = text.substr(0, range.begin - begin);
        std::size_t const size = before.size() - (before.find_last_not_of(blanksOfALine) + 1);
        return {range.begin - size, range.end, number, range.column - size};
    }

    /// \p statement with its semicolon and the blanks that become redundant; the whole line if
    /// nothing else is on it.
    SourceRange withSurroundings(SourceRange const& statement) const {
        std::size_t end = skipBlanks(statement.end - begin);
        if (text.substr(end).starts_with(';')) {
            end = skipBlanks(end + 1);
        }
        if (end < text.size()) {
            return {statement.begin, begin + end, number, statement.column};
        }
        SourceRange const range =
            withBlanksBefore({statement.begin, begin + end, number, statement.column});
        return range.begin == begin ? whole() : range;
    }

    /// The line with its line end.
    SourceRange whole() const { return {begin, next, number, 1}; }

  private:
    std::size_t skipBlanks(std::size_t position) const {
        return std::min(text.find_first_not_of(blanksOfALine, position), text.size());
    }

    std::string_view text;
    std::size_t begin;
    std::size_t number;
    std::size_t next;
};

/// Makes the edits for the fixes of one command.
class CommandEditor {
  public:
    CommandEditor(AnalysedFile const& analysedFile, std::size_t command)
        : file(analysedFile),
          analysed(analysedFile.commands.at(command)),
          line(analysedFile.source, analysed.command.range.line) {}

    std::vector<Edit> edit(std::span<Fix const> fixes) const {
        if (fixes.size() == analysed.entries.size()) {
            return {replaceAll(fixes)};
        }
        std::vector<Edit> edits;
        if (std::string commands = commandsWithAlias(fixes); !commands.empty()) {
            SourceRange const& range = analysed.command.range;
            edits.push_back(
                {{range.begin, range.begin, range.line, range.column}, std::move(commands) + "; "});
        }
        for (Fix const& fix : fixes) {
            edits.push_back({line.withBlanksBefore(rangeOf(fix)), {}});
        }
        return edits;
    }

  private:
    Edit replaceAll(std::span<Fix const> fixes) const {
        SourceRange const& whole = analysed.command.range;
        std::string commands = commandsWithAlias(fixes);
        if (commands.empty()) {
            return {line.withSurroundings(whole), {}};
        }
        return fixes.size() == 1 ? giveAlias(fixes.front()) : Edit{whole, std::move(commands)};
    }

    Edit giveAlias(Fix const& fix) const {
        SourceRange const& range = rangeOf(fix);
        if (hasAlias()) {
            return {range, fix.alias};
        }
        std::size_t const column = range.column + countCharacters(file.source.text(range));
        return {{range.end, range.end, range.line, column}, " as " + fix.alias};
    }

    /// Whether the command, which has one entry, has an alias clause.
    bool hasAlias() const {
        return std::ranges::any_of(analysed.command.arguments,
                                   [](Word const& word) { return word.text == "as"; });
    }

    /// A command for each fix with an alias: a command can have only one package with an alias.
    std::string commandsWithAlias(std::span<Fix const> fixes) const {
        std::string commands;
        for (Fix const& fix : fixes) {
            if (fix.alias.empty()) {
                continue;
            }
            commands.append(commands.empty() ? "" : "; ")
                .append(analysed.command.isDynamic ? "dynamic import " : "import ")
                .append(file.source.text(rangeOf(fix)))
                .append(" as ")
                .append(fix.alias);
        }
        return commands;
    }

    SourceRange const& rangeOf(Fix const& fix) const { return file.rangeOf(fix.entry); }

    AnalysedFile const& file;
    AnalysedCommand const& analysed;
    Line line;
};

bool hasOnlyBlanks(std::string_view text) {
    return text.find_first_not_of(blanksOfALine) == std::string_view::npos;
}

/// Whether only blanks are left of a line after its edits.
bool leaveNothing(AnalysedFile const& file, std::span<Edit const> edits) {
    std::size_t const number = edits.front().removed.line;
    std::string_view const line = file.source.line(number);
    std::size_t const begin = file.source.lineBegin(number);
    std::size_t position = 0;
    for (Edit const& edit : edits) {
        std::size_t const next = std::max(edit.removed.begin - begin, position);
        if (!edit.inserted.empty() || !hasOnlyBlanks(line.substr(position, next - position))) {
            return false;
        }
        position = std::min(edit.removed.end - begin, line.size());
    }
    return hasOnlyBlanks(line.substr(position));
}

/// Extends the edits to remove lines of which nothing is left.
std::vector<Edit> withWholeLines(AnalysedFile const& file, std::vector<Edit> const& edits) {
    std::vector<Edit> result;
    for (auto begin = edits.begin(); begin != edits.end();) {
        std::size_t const number = begin->removed.line;
        auto const end = std::find_if(
            begin, edits.end(), [&](Edit const& edit) { return edit.removed.line != number; });
        if (leaveNothing(file, {begin, end})) {
            result.push_back({Line(file.source, number).whole(), {}});
        } else {
            result.insert(result.end(), begin, end);
        }
        begin = end;
    }
    return result;
}

/// The fixes of the file in the order of their commands and entries.
std::vector<Fix> collectFixes(AnalysedFile const& file) {
    std::vector<Fix> fixes;
    for (Diagnostic const& diagnostic : file.diagnostics) {
        if (diagnostic.fix) {
            fixes.push_back(*diagnostic.fix);
        }
    }
    std::ranges::sort(fixes, {}, &Fix::entry);
    return fixes;
}

struct FixedText {
    std::string text;
    std::size_t fixes = 0; ///< applied
};

/// Applies every fix of the diagnostics of \p file.
FixedText applyFixes(AnalysedFile const& file) {
    std::vector<Fix> const fixes = collectFixes(file);
    std::vector<Edit> edits;
    for (auto begin = fixes.begin(); begin != fixes.end();) {
        std::size_t const command = begin->entry.command;
        auto const end = std::find_if(begin, fixes.end(),
                                      [&](Fix const& fix) { return fix.entry.command != command; });
        for (Edit& edit : CommandEditor(file, command).edit({begin, end})) {
            edits.push_back(std::move(edit));
        }
        begin = end;
    }
    return {applyEdits(file.source.text(), withWholeLines(file, edits)), fixes.size()};
}

} // namespace

std::vector<Edit> editsFor(AnalysedFile const& file, Fix const& fix) {
    return CommandEditor(file, fix.entry.command).edit(std::span(&fix, 1));
}

std::string applyEdits(std::string_view text, std::vector<Edit> const& edits) {
    std::string result;
    std::size_t position = 0;
    for (Edit const& edit : edits) {
        // Two adjacent removed statements both include the blanks between them.
        std::size_t const begin = std::max(edit.removed.begin, position);
        result.append(text.substr(position, begin - position)).append(edit.inserted);
        position = edit.removed.end;
    }
    return result.append(text.substr(position));
}

FixedFile analyseAndFix(SourceFile source, AnalysisOptions const& options) {
    std::string const name = source.name();
    std::size_t fixes = 0;
    for (std::size_t round = 0;; ++round) {
        AnalysedFile file = analyse(std::move(source), options);
        FixedText fixed = round < mostRoundsOfFixes ? applyFixes(file) : FixedText();
        if (fixed.fixes == 0) {
            return {std::move(file), fixes};
        }
        fixes += fixed.fixes;
        source = SourceFile(name, std::move(fixed.text));
    }
}

} // namespace explorer
