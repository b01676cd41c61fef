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

/// Walks the scopes in their order, which is that of the tree, and keeps the guides that lead from
/// the scopes around the current one to their later parts.
class ScopeTree {
  public:
    ScopeTree(AnalysedFile const& analysedFile, Style chosenStyle)
        : file(analysedFile), style(chosenStyle), lastChildren(file.scopes.size(), 0) {
        for (ScopeIndex scope = 1; scope < file.scopes.size(); ++scope) {
            lastChildren.at(*file.scopes[scope].scope.parent) = scope;
        }
    }

    std::string draw() && {
        for (ScopeIndex scope = 0; scope < file.scopes.size(); ++scope) {
            bool const hasChildren = lastChildren[scope] != 0;
            drawHeading(scope);
            drawDetails(file.scopes[scope], hasChildren ? "│  " : "   ");
        }
        return std::move(drawing);
    }

  private:
    void drawHeading(ScopeIndex index) {
        auto const& [scope, level, entries, view] = file.scopes[index];
        if (!scope.parent) {
            std::string const name =
                harmless(file.source.name(), std::numeric_limits<std::size_t>::max());
            drawing += style.apply(Role::Strong, "file " + name) + "\n";
            return;
        }
        bool const isLast = lastChildren[*scope.parent] == index;
        // The guides of the scope's own depth and of all deeper ones are over.
        guides.resize(std::min(level, deepestViewedLevel) - 1);
        drawGuides();
        drawing += style.apply(Role::Faint, isLast ? "└─ " : "├─ ");
        drawing += style.apply(Role::Strong, "scope " + harmless(scope.name));
        drawing += style.apply(Role::Faint, "  line " + std::to_string(scope.range.line));
        if (level > deepestViewedLevel) {
            drawing += style.apply(Role::Faint, ", level " + std::to_string(level));
        }
        drawing += '\n';
        guides.emplace_back(isLast ? "   " : "│  ");
    }

    void drawGuides() {
        std::string line;
        for (std::string_view const guide : guides) {
            line += guide;
        }
        drawing += style.apply(Role::Faint, line);
    }

    void drawDetails(AnalysedScope const& scope, std::string_view guide) {
        std::vector<Row> rows;
        for (EntryReference const& entry : scope.entries) {
            rows.push_back(makeRow("imports", entry, lineOf(file, entry)));
        }
        if (scope.view) {
            addRows(rows, *scope.view);
        } else {
            rows.push_back({makeCell("inherits", Role::Faint),
                            makeCell("not listed at this depth", Role::Faint)});
        }
        for (std::string const& line : layOut(rows, style)) {
            drawGuides();
            drawing += style.apply(Role::Faint, guide) + "  " + line + "\n";
        }
    }

    void addRows(std::vector<Row>& rows, ScopeView const& view) const {
        for (EntryReference const& entry : view.inherited.listed) {
            rows.push_back(makeRow("inherits", entry, placeOf(file, entry)));
        }
        addRowOfOmitted(rows, "inherits", view.inherited.omitted);
        for (auto const& [entry, by] : view.hidden.listed) {
            rows.push_back(makeRow("hides", entry, placeOf(file, entry)));
            rows.back().push_back(makeCell(file.at(by).text, std::nullopt, "behind "));
            rows.back().push_back(makeCell(lineOf(file, by), Role::Faint));
        }
        addRowOfOmitted(rows, "hides", view.hidden.omitted);
    }

    Row makeRow(std::string_view what, EntryReference const& reference,
                std::string const& place) const {
        AnalysedEntry const& entry = file.at(reference);
        return {makeCell(what, Role::Faint), makeCell(toText(entry.kind), Role::Kind),
                makeCell(entry.text), makeCell(place, Role::Faint)};
    }

    static void addRowOfOmitted(std::vector<Row>& rows, std::string_view what, std::size_t count) {
        if (count > 0) {
            rows.push_back({makeCell(what, Role::Faint),
                            makeCell("and " + std::to_string(count) + " more", Role::Faint)});
        }
    }

    AnalysedFile const& file;
    Style style;
    /// By scope; 0 for a scope without children.
    std::vector<ScopeIndex> lastChildren;
    std::vector<std::string_view> guides;
    std::string drawing;
};

} // namespace

std::string placeOf(AnalysedFile const& file, EntryReference const& reference) {
    Scope const& scope = file.scopes.at(file.commands.at(reference.command).command.scope).scope;
    return lineOf(file, reference) + (scope.parent ? ", scope " + harmless(scope.name) : ", file");
}

std::string drawScopes(AnalysedFile const& file, Style style) {
    return ScopeTree(file, style).draw();
}

} // namespace explorer
