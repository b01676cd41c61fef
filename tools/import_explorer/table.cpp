// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/table.hpp>

#include <algorithm>

namespace explorer {

namespace {

constexpr std::size_t widthOfCells = 40;
constexpr std::size_t gap = 2;

} // namespace

Cell makeCell(std::string_view text, std::optional<Role> role, std::string_view label) {
    DisplayedText shown = displayText(text, widthOfCells);
    shown.text.insert(0, label);
    shown.width += label.size();
    return {std::move(shown), role};
}

void Table::measure(Row const& row) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t column = 0; column < row.size(); ++column) {
        widths[column] = std::max(widths[column], row[column].shown.width);
    }
}

std::string Table::layOut(Row const& row, Style style) const {
    std::string line;
    std::size_t blanks = 0;
    for (std::size_t column = 0; column < row.size(); ++column) {
        auto const& [shown, role] = row[column];
        if (!shown.text.empty()) {
            line.append(blanks, ' ');
            line += role ? style.apply(*role, shown.text) : shown.text;
            blanks = 0;
        }
        blanks += widths.at(column) - shown.width + gap;
    }
    return line;
}

} // namespace explorer
