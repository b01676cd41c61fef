// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// All answers of a list, in a form that can be compared.

#include <import/import_list.hpp>

#include <string>
#include <vector>

namespace support {

using Answers = std::vector<std::string>;

/// The answers of \p list to every question, looking up \p names, and the results of adding entries
/// that could conflict with these names to copies of it.
Answers answersOf(lf::import::IImportList const& list, std::vector<std::u16string> const& names);

} // namespace support
