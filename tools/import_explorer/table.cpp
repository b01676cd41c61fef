// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/table.hpp>

#include <algorithm>

namespace explorer {

namespace {

constexpr std::size_t widthOfCells = 40;
constexpr std::size_t gap = 2;

std::vector<std::size_t> widthsOf(std::vector<Row> const& rows) {
    std::vector<std::size_t> widths;
    for (Row const& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], row[column].shown.width);
        }
    }
    return widths;
}

} // namespace

Cell makeCell(std::string_view text, std::optional<Role> role, std::string_view label) {
    DisplayedText shown = displayText(text, widthOfCells);
    shown.text.insert(0, label);
    shown.width += label.size();
    return {std::move(shown), role};
}

std::vector<std::string> layOut(std::vector<Row> const& rows, Style style) {
    std::vector<std::size_t> const widths = widthsOf(rows);
    std::vector<std::string> lines;
    for (Row const& row : rows) {
        std::string& line = lines.emplace_back();
        std::size_t blanks = 0;
        for (std::size_t column = 0; column < row.size(); ++column) {
            auto const& [shown, role] = row[column];
            if (!shown.text.empty()) {
                line.append(blanks, ' ');
                line += role ? style.apply(*role, shown.text) : shown.text;
                blanks = 0;
            }
            blanks += widths[column] - shown.width + gap;
        }
    }
    return lines;
}

} // namespace explorer
