// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Classification: pure functions from the text of one import argument to its record.
///
/// Nothing else looks at the text of an argument. Faults of the text are records; the functions
/// throw std::bad_alloc and, unchanged, what the host's services throw.

#include <import/arguments.hpp>

#include <optional>
#include <string_view>

namespace lf::import {

/// The grammar with package imports on: any alternative.
ParsedImportArgument classifyArgument(std::u16string_view argument);

/// The legacy grammar, with package imports off: a name, a wildcard, a rejection or an ignored
/// argument.
ParsedImportArgument classifyLegacyArgument(std::u16string_view argument);

/// For an argument with a dot: a name or wildcard without warning, or a rejection.
ParsedImportArgument classifyDottedName(std::u16string_view argument);

/// For an argument with a dot: a name or wildcard, perhaps with a warning.
ParsedImportArgument classifyLegacyDottedName(std::u16string_view argument);

/// For a word without dot and `@` that is not `as`: a package name or a rejection.
ParsedImportArgument classifyPlainName(std::u16string_view word);

/// For an argument with an `@`: a versioned package or a rejection, as the package descriptor
/// library judges the whole text.
ParsedImportArgument classifyVersionedPackage(std::u16string_view argument);

/// The texts before and after a dot.
struct DotSplit {
    std::u16string_view head;
    std::u16string_view tail;
};

/// Nothing when \p text has no dot.
std::optional<DotSplit> splitAtFirstDot(std::u16string_view text) noexcept;

} // namespace lf::import
