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

/// The rows as lines, without line ends, their columns aligned and two blanks apart. No line ends
/// with blanks.
std::vector<std::string> layOut(std::vector<Row> const& rows, Style style);

} // namespace explorer
