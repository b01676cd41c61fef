// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What the library makes of a command, in the plain form that the model uses as well.

#include <model/outcome.hpp>

#include <import/argument_parser.hpp>
#include <import/entries.hpp>

#include <string>
#include <vector>

namespace support {

/// Everything that can be read out of \p entry; the index is 0.
///
/// \throws std::bad_variant_access for a message argument that is not UTF-16 text.
model::Outcome describe(lf::import::FullyQualifiedImportEntry const& entry);
model::Outcome describe(lf::import::WildcardImportEntry const& entry);
model::Outcome describe(lf::import::PackageImportEntry const& entry);
model::Outcome describe(lf::import::InvalidImportEntry const& entry);

/// The valid entry of which \p entry says all that can be read out of it.
lf::import::ImportEntry makeEntry(model::Outcome const& entry);

/// Everything that can be read out of \p entries.
///
/// \throws std::bad_variant_access for a message argument that is not UTF-16 text.
std::vector<model::Outcome> observe(std::vector<lf::import::ParsedImportEntry> const& entries);

/// The result of parsing \p arguments, given as a list of texts.
std::vector<model::Outcome> parseTexts(std::vector<std::u16string> const& arguments,
                                       lf::import::Behavior behavior);

/// The result of parsing \p arguments, given as a command in a syntax tree.
std::vector<model::Outcome> parseTree(std::vector<std::u16string> const& arguments,
                                      lf::import::Behavior behavior);

} // namespace support
