// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Writes valid entries the way a user would write the import.
///
/// Names print as their raw argument; packages as their specifier, followed by " as " and the
/// introduced name if that differs from the package's own. Narrow streams receive UTF-8. A stream's
/// width and fill apply to the first piece. Errors set the stream's state; exceptions of the
/// conversion to UTF-8 and of the specifier's printing are passed on.

#include <import/entries.hpp>
#include <import/export.hpp>

#include <ostream>

namespace lf::import {

/// Writes `a.b.c` in UTF-8.
GLEIGEM_EXPORT std::ostream& operator<<(std::ostream& stream,
                                        FullyQualifiedImportEntry const& entry);

/// Writes `a.b.*` in UTF-8.
GLEIGEM_EXPORT std::ostream& operator<<(std::ostream& stream, WildcardImportEntry const& entry);

/// Writes `pkg@^1.2 as p` in UTF-8.
GLEIGEM_EXPORT std::ostream& operator<<(std::ostream& stream, PackageImportEntry const& entry);

/// Writes `a.b.c`.
GLEIGEM_EXPORT std::basic_ostream<char16_t>& operator<<(std::basic_ostream<char16_t>& stream,
                                                        FullyQualifiedImportEntry const& entry);

/// Writes `a.b.*`.
GLEIGEM_EXPORT std::basic_ostream<char16_t>& operator<<(std::basic_ostream<char16_t>& stream,
                                                        WildcardImportEntry const& entry);

/// Writes `pkg@^1.2 as p`.
GLEIGEM_EXPORT std::basic_ostream<char16_t>& operator<<(std::basic_ostream<char16_t>& stream,
                                                        PackageImportEntry const& entry);

} // namespace lf::import
