// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Text in columns.

#include <import_explorer/display_width.hpp>
#include <import_explorer/style.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace explorer {

/// One cell of a row.
struct Cell {
    DisplayedText shown;
    std::optional<Role> role;
};

/// A cell with \p label and \p text, which is escaped and, if it is too wide, truncated.
Cell makeCell(std::string_view text, std::optional<Role> role = std::nullopt,
              std::string_view label = {});

using Row = std::vector<Cell>;

/// Computes the widths of columns, which are separated by two blanks. Does not store rows: the
/// caller creates each row twice, to measure it and to lay it out, so that long tables need no
/// memory.
class Table {
  public:
    void measure(Row const& row);

    /// Lays out a row that was measured, without leading blanks and line end.
    std::string layOut(Row const& row, Style style) const;

  private:
    std::vector<std::size_t> widths;
};

} // namespace explorer
