// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What each of the two libraries does: throws, catches, makes lists and looks at them.

#include <memory>

namespace lf::import {

class IImportList;

} // namespace lf::import

namespace identity {

/// Nothing of a list is known to the program that passes it from library to library.
using List = std::shared_ptr<lf::import::IImportList const>;

/// Throws something.
using Thrower = void (*)();

/// Whether what a thrower throws is caught as it is to be.
using Catcher = bool (*)(Thrower thrower);

struct Side {
    Thrower throwEmptyHolder;
    Thrower throwInvalidSpecifier;

    Catcher catchEmptyHolder;
    Catcher catchEmptyHolderAsStandardException;
    Catcher catchEmptyHolderFromBoost;
    Catcher catchEmptyHolderFromExceptionPointer;
    Catcher catchInvalidSpecifier;
    Catcher catchInvalidSpecifierAsStandardException;

    /// Makes a list of another make, with the package `p` in it.
    List (*makeForeignList)();
    /// Makes a list of the library, with the package `p` in it.
    List (*makeList)();
    /// Whether the list is found to be of another make, also as the parent of another list.
    bool (*isForeign)(List const& list);
    /// Whether a list inside of the list sees the package `p`.
    bool (*isSeenInside)(List const& list);
};

/// The name of the function without arguments that answers the Side of a library.
inline constexpr char const* sideFunction = "identity_side";

} // namespace identity
