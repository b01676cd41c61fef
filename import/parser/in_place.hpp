// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Constructs the result of a function in a container or variant.

#include <type_traits>

namespace lf::import {

/// An argument of `emplace` that makes the new element the result of \p function, without a move:
/// it converts to that result, and C++ constructs the result of a conversion in its destination.
///
/// A record has up to three texts and a warning. Moving it right after writing it would wait for
/// these writes.
template <typename Function>
struct InPlace {
    Function function;

    // Implicit, since `emplace` relies on the conversion.
    operator std::invoke_result_t<Function const&>() const { // NOLINT(google-explicit-constructor)
        return function();
    }
};

template <typename Function>
InPlace(Function) -> InPlace<Function>;

} // namespace lf::import
