// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/caret.hpp>

#include <import_explorer/display_width.hpp>
#include <import_explorer/utf8.hpp>

#include <algorithm>

namespace explorer {

namespace {

/// The part of a line that is shown, in bytes.
struct Window {
    std::size_t begin = 0;
    std::size_t end = 0;
};

std::size_t characterBefore(std::string_view line, std::size_t position) {
    do {
        --position;
    } while (position > 0 && isContinuationByte(line[position]));
    return position;
}

/// Moves from \p position towards the beginning over as many characters as fit into \p columns.
std::size_t moveBack(std::string_view line, std::size_t position, std::size_t columns) {
    std::size_t cost = 0;
    while (position > 0) {
        std::size_t const previous = characterBefore(line, position);
        cost += display(line.substr(previous)).cost();
        if (cost > columns) {
            break;
        }
        position = previous;
    }
    return position;
}

std::size_t moveForward(std::string_view line, std::size_t position, std::size_t columns) {
    return position + fit(line.substr(position), columns, Tabs::Kept).size;
}

/// The whole line if it is short; otherwise a full window with the range and some text before it.
Window chooseWindow(std::string_view line, std::size_t begin, std::size_t end, std::size_t width) {
    std::size_t const lead = moveForward(line, 0, width);
    if (lead == line.size() || end <= lead) {
        return {0, lead};
    }
    std::size_t const windowBegin = moveBack(line, begin, width / 3);
    std::size_t const windowEnd = moveForward(line, windowBegin, width);
    if (windowEnd == line.size()) {
        return {moveBack(line, line.size(), width), windowEnd};
    }
    return {windowBegin, windowEnd};
}

/// The line of carets below the window, up to the end of the range.
std::string makeCaretLine(std::string_view line, Window const& window, std::size_t begin,
                          std::size_t end) {
    std::string caret;
    bool isBegun = false;
    for (std::size_t position = window.begin; position < std::min(window.end, end);) {
        DisplayedCharacter const character = display(line.substr(position));
        if (character.isTab()) {
            caret += '\t';
        } else if (position < begin) {
            caret.append(character.width, ' ');
        } else {
            caret.append(character.width, '~');
            if (!isBegun && character.width > 0) {
                caret[caret.size() - character.width] = '^';
                isBegun = true;
            }
        }
        position += character.size;
    }
    return isBegun ? caret : caret + '^';
}

} // namespace

Excerpt makeExcerpt(std::string_view line, std::size_t begin, std::size_t end, std::size_t width) {
    Window const window = chooseWindow(line, begin, end, width);
    Excerpt excerpt;
    if (window.begin > 0) {
        excerpt.source = cutMark;
        excerpt.caret.assign(cutMark.size(), ' ');
    }
    excerpt.source +=
        fit(line.substr(window.begin, window.end - window.begin), width, Tabs::Kept).text;
    if (window.end < line.size()) {
        excerpt.source += cutMark;
    }
    excerpt.caret += makeCaretLine(line, window, begin, end);
    return excerpt;
}

} // namespace explorer
