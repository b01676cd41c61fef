// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Lets a function's result be initialised where a container or variant wants it.

#include <type_traits>

namespace lf::import {

/// Hand it to an `emplace` and the element is what the function returns, without a move: it
/// converts to its result, and an object initialised by a conversion is the conversion's result.
///
/// Records have up to three texts and a warning, and each passes a variant and a vector: with moves
/// in their place, parsing a command of short names takes 1.7 times as long.
template <typename Function>
struct InPlace {
    Function function;

    // Implicit, since that is the point.
    operator std::invoke_result_t<Function const&>() const { // NOLINT(google-explicit-constructor)
        return function();
    }
};

template <typename Function>
InPlace(Function) -> InPlace<Function>;

} // namespace lf::import
