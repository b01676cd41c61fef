// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The records into which an argument of an `import` command is classified.

#include <import/export.hpp>
#include <import/platform.hpp>

#include <optional>
#include <string>
#include <variant>

namespace lf::import {

/// An argument that names a package and nothing more: `pkg`.
struct GLEIGEM_EXPORT PackageNameImportArgument {
    /// The package name as written.
    std::u16string name;
};

/// An argument that names a package and its required versions: `pkg@^1.2`.
///
/// Not default-constructible, since a package specifier has no empty state.
struct GLEIGEM_EXPORT VersionedPackageImportArgument {
    /// Package name and version range, already parsed.
    Oxtavel::KeldarComponents::PackageSpecifier specifier;
};

/// A dotted name that imports one item: `a.b.c`.
struct GLEIGEM_EXPORT FullyQualifiedImportArgument {
    /// The text before the first dot: `a`.
    std::u16string rootElement;
    /// The text after the last dot, the name that becomes visible: `c`.
    std::u16string introducedName;
    /// The argument exactly as written.
    std::u16string rawArgument;
    /// A warning about the argument, usually none. After a move it is still engaged and holds an
    /// empty holder.
    std::optional<resource_core::GenericMsgIDHolder> warning;
};

/// A dotted name that imports everything below a prefix: `a.b.*`.
struct GLEIGEM_EXPORT WildcardImportArgument {
    /// The text before the first dot: `a`.
    std::u16string rootElement;
    /// The argument exactly as written, ending in `.*`.
    std::u16string rawArgument;
    /// As for FullyQualifiedImportArgument.
    std::optional<resource_core::GenericMsgIDHolder> warning;
};

/// The word `as` of an alias clause; only its position among the arguments matters.
struct GLEIGEM_EXPORT AsClauseImportArgument {};

/// An argument that is ignored.
struct GLEIGEM_EXPORT IgnoredArgument {
    /// The argument as written.
    std::u16string text;
};

/// An argument that classification rejected.
struct GLEIGEM_EXPORT InvalidImportArgument {
    /// Why; empty only in a default-constructed or moved-from record.
    resource_core::GenericMsgIDHolder msgHolder;
};

/// One classified argument. The order is fixed: first the two kinds of names, then the two kinds of
/// packages.
using ParsedImportArgument =
    std::variant<FullyQualifiedImportArgument, WildcardImportArgument, PackageNameImportArgument,
                 VersionedPackageImportArgument, AsClauseImportArgument, InvalidImportArgument,
                 IgnoredArgument>;

} // namespace lf::import
