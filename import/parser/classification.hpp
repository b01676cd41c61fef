// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Classification: pure functions from the text of one import argument to its record.
///
/// Only these functions read the text of an argument. Invalid text yields a record, too. They throw
/// std::bad_alloc and the exceptions of the host's services.

#include <import/arguments.hpp>

#include <string_view>

namespace lf::import {

/// The grammar with package imports on: any alternative.
ParsedImportArgument classifyArgument(std::u16string_view argument);

/// The legacy grammar, with package imports off: a name, a wildcard, a rejection or an ignored
/// argument.
ParsedImportArgument classifyLegacyArgument(std::u16string_view argument);

} // namespace lf::import
