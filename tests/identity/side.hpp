// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The functions of each of the two libraries: throw, catch, create and inspect lists.

#include <memory>

namespace lf::import {

class IImportList;

} // namespace lf::import

namespace identity {

/// A list as the program sees it, which passes it from one library to the other.
using List = std::shared_ptr<lf::import::IImportList const>;

/// Throws something.
using Thrower = void (*)();

/// Whether the exception of a thrower is caught as expected.
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

    /// Creates a foreign list that contains the package `p`.
    List (*makeForeignList)();
    /// Creates a list of the library that contains the package `p`.
    List (*makeList)();
    /// Whether the list is recognised as foreign, also as the parent of another list.
    bool (*isForeign)(List const& list);
    /// Whether a list inside of the list sees the package `p`.
    bool (*isSeenInside)(List const& list);
};

/// The name of the function without arguments that returns the Side of a library.
inline constexpr char const* sideFunction = "identity_side";

} // namespace identity
