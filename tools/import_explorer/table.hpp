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

/// What stands in one column of a row.
struct Cell {
    DisplayedText shown;
    std::optional<Role> role;
};

/// A cell with \p text, made harmless and cut where it is too wide for a column, behind \p label.
Cell makeCell(std::string_view text, std::optional<Role> role = std::nullopt,
              std::string_view label = {});

using Row = std::vector<Cell>;

/// The widths of columns that are two blanks apart. It keeps no rows: they are made twice, to be
/// measured and to be laid out, so that a table of any length takes no room.
class Table {
  public:
    void measure(Row const& row);

    /// A row that was measured, without a line end or blanks before it.
    std::string layOut(Row const& row, Style style) const;

  private:
    std::vector<std::size_t> widths;
};

} // namespace explorer
