// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/scope_tree.hpp>

#include <import_explorer/display_width.hpp>
#include <import_explorer/table.hpp>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace explorer {

namespace {

std::string harmless(std::string const& text, std::size_t maximumWidth = 40) {
    return displayText(text, maximumWidth).text;
}

std::string lineOf(AnalysedFile const& file, EntryReference const& reference) {
    return "line " + std::to_string(file.rangeOf(reference).line);
}

/// Draws the scopes in order and keeps the guides: the vertical lines that connect enclosing scopes
/// with their later children.
class ScopeTree {
  public:
    ScopeTree(AnalysedFile const& analysedFile, Style chosenStyle, ITextSink& target)
        : file(analysedFile),
          style(chosenStyle),
          sink(target),
          lastChildren(file.scopes.size(), 0) {
        for (ScopeIndex scope = 1; scope < file.scopes.size(); ++scope) {
            lastChildren.at(*file.scopes[scope].scope.parent) = scope;
        }
    }

    void draw() {
        for (ScopeIndex scope = 0; scope < file.scopes.size(); ++scope) {
            bool const hasChildren = lastChildren[scope] != 0;
            drawHeading(scope);
            drawDetails(file.scopes[scope], hasChildren ? "│  " : "   ");
        }
    }

  private:
    void drawHeading(ScopeIndex index) {
        auto const& [scope, level, entries, view] = file.scopes[index];
        if (!scope.parent) {
            std::string const name =
                harmless(file.source.name(), std::numeric_limits<std::size_t>::max());
            sink.write(style.apply(Role::Strong, "file " + name) + "\n");
            return;
        }
        bool const isLast = lastChildren[*scope.parent] == index;
        // Guides at the depth of this scope and below end here.
        guides.resize(std::min(level, deepestViewedLevel) - 1);
        std::string line = leadingGuides();
        line += style.apply(Role::Faint, isLast ? "└─ " : "├─ ");
        line += style.apply(Role::Strong, "scope " + harmless(scope.name));
        line += style.apply(Role::Faint, "  line " + std::to_string(scope.range.line));
        if (level > deepestViewedLevel) {
            line += style.apply(Role::Faint, ", level " + std::to_string(level));
        }
        sink.write(line + "\n");
        guides.emplace_back(isLast ? "   " : "│  ");
    }

    std::string leadingGuides() const {
        std::string line;
        for (std::string_view const guide : guides) {
            line += guide;
        }
        return style.apply(Role::Faint, line);
    }

    void drawDetails(AnalysedScope const& scope, std::string_view guide) {
        Table table;
        forEachRow(scope, [&](Row const& row) { table.measure(row); });
        std::string const margin = leadingGuides() + style.apply(Role::Faint, guide) + "  ";
        forEachRow(scope,
                   [&](Row const& row) { sink.write(margin + table.layOut(row, style) + "\n"); });
    }

    template <typename UseRow>
    void forEachRow(AnalysedScope const& scope, UseRow&& useRow) const {
        for (EntryReference const& entry : scope.entries) {
            useRow(makeRow("imports", entry, lineOf(file, entry)));
        }
        if (!scope.view) {
            useRow({makeCell("inherits", Role::Faint),
                    makeCell(scope.level > deepestViewedLevel
                                 ? "not listed at this depth"
                                 : "not listed: too many scopes and imports",
                             Role::Faint)});
            return;
        }
        auto const& [inherited, hidden] = *scope.view;
        for (EntryReference const& entry : inherited.listed) {
            useRow(makeRow("inherits", entry, placeOf(file, entry)));
        }
        useRowOfOmitted("inherits", inherited.omitted, useRow);
        for (auto const& [entry, by] : hidden.listed) {
            Row row = makeRow("hides", entry, placeOf(file, entry));
            row.push_back(makeCell(file.at(by).text, std::nullopt, "behind "));
            row.push_back(makeCell(lineOf(file, by), Role::Faint));
            useRow(row);
        }
        useRowOfOmitted("hides", hidden.omitted, useRow);
    }

    Row makeRow(std::string_view what, EntryReference const& reference,
                std::string const& place) const {
        AnalysedEntry const& entry = file.at(reference);
        return {makeCell(what, Role::Faint), makeCell(toText(entry.kind), Role::Kind),
                makeCell(entry.text), makeCell(place, Role::Faint)};
    }

    template <typename UseRow>
    static void useRowOfOmitted(std::string_view what, std::size_t count, UseRow&& useRow) {
        if (count > 0) {
            useRow({makeCell(what, Role::Faint),
                    makeCell("further " + std::to_string(count) + " not shown", Role::Faint)});
        }
    }

    AnalysedFile const& file;
    Style style;
    ITextSink& sink;
    /// The last child of each scope; 0 if it has none.
    std::vector<ScopeIndex> lastChildren;
    std::vector<std::string_view> guides;
};

} // namespace

std::string placeOf(AnalysedFile const& file, EntryReference const& reference) {
    Scope const& scope = file.scopes.at(file.commands.at(reference.command).command.scope).scope;
    return lineOf(file, reference) + (scope.parent ? ", scope " + harmless(scope.name) : ", file");
}

void drawScopes(AnalysedFile const& file, Style style, ITextSink& sink) {
    ScopeTree(file, style, sink).draw();
}

} // namespace explorer
