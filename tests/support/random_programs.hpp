// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Random list programs for properties; failing ones are shrunk.

#include <support/list_program.hpp>

#include <rapidcheck.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace support {

/// A program generated from \p random.
inline ListProgram makeProgram(rc::Random& random) {
    return ListProgramMaker([&random](std::size_t bound) {
               return static_cast<std::size_t>(random.next() % bound);
           })
        .program();
}

/// Generates any program.
inline rc::Gen<ListProgram> anyProgram() {
    return [](rc::Random random, int) {
        return rc::shrinkable::shrinkRecur(makeProgram(random), [](ListProgram const& program) {
            return rc::seq::map(rc::shrink::removeChunks(program.steps),
                                [reach = program.otherReach](std::vector<ListStep> steps) {
                                    return ListProgram{std::move(steps), reach};
                                });
        });
    };
}

} // namespace support
