// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// All that a list tells, in a form in which lists can be compared.

#include <import/import_list.hpp>

#include <string>
#include <vector>

namespace support {

using Answers = std::vector<std::string>;

/// What \p list answers to every question, with \p names as the names to look up, and what copies
/// of it answer to additions that such a name could be in the way of.
Answers answersOf(lf::import::IImportList const& list, std::vector<std::u16string> const& names);

} // namespace support
