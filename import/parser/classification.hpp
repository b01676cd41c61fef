// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Classification: pure functions from the text of one import argument to its record.
///
/// Nothing else looks at the text of an argument. Faults of the text are records; the functions
/// throw std::bad_alloc and, unchanged, what the host's services throw.

#include <import/arguments.hpp>
#include <import/platform.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace lf::import {

/// What a text with a dot can be.
using DottedNameResult =
    std::variant<FullyQualifiedImportArgument, WildcardImportArgument, InvalidImportArgument>;

/// What a word can be: an accepted name or a rejection.
using PlainNameResult = std::variant<std::u16string, InvalidImportArgument>;

/// What a text with an `@` can be.
using VersionedPackageResult =
    std::variant<Oxtavel::KeldarComponents::PackageSpecifier, InvalidImportArgument>;

/// The grammar with package imports on: any alternative.
ParsedImportArgument classifyArgument(std::u16string_view argument);

/// The legacy grammar, with package imports off: a name, a wildcard, a rejection or an ignored
/// argument.
ParsedImportArgument classifyLegacyArgument(std::u16string_view argument);

/// For an argument with a dot; never attaches a warning.
DottedNameResult classifyDottedName(std::u16string_view argument);

/// For an argument with a dot; never rejects.
DottedNameResult classifyLegacyDottedName(std::u16string_view argument);

/// For a word without dot and `@` that is not `as`.
PlainNameResult classifyPlainName(std::u16string_view word);

/// For an argument with an `@`, whose whole text the package descriptor library judges.
VersionedPackageResult classifyVersionedPackage(std::u16string_view argument);

/// The texts before and after a dot.
struct DotSplit {
    std::u16string_view head;
    std::u16string_view tail;
};

/// Nothing when \p text has no dot.
std::optional<DotSplit> splitAtFirstDot(std::u16string_view text) noexcept;

} // namespace lf::import
