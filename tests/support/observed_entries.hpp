// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The library's results as plain data, in the form of the model.

#include <model/outcome.hpp>

#include <import/argument_parser.hpp>
#include <import/entries.hpp>

#include <string>
#include <vector>

namespace support {

/// All observable data of \p entry; the index is 0.
///
/// \throws std::bad_variant_access for a message argument that is not UTF-16 text.
model::Outcome describe(lf::import::FullyQualifiedImportEntry const& entry);
model::Outcome describe(lf::import::WildcardImportEntry const& entry);
model::Outcome describe(lf::import::PackageImportEntry const& entry);
model::Outcome describe(lf::import::InvalidImportEntry const& entry);

/// The valid entry that \p entry describes.
lf::import::ImportEntry makeEntry(model::Outcome const& entry);

/// All observable data of \p entries.
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
