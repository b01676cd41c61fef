// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Has callgrind count the instructions of a piece of work and write them down under a name, for
/// tests/reliability/growth/growth_test.py. Outside valgrind it does nothing.

#include <valgrind/callgrind.h>

#include <string>

namespace support {

/// While there is one, instructions count.
class CountedInstructions {
  public:
    CountedInstructions() { CALLGRIND_TOGGLE_COLLECT; }

    CountedInstructions(CountedInstructions const&) = delete;
    CountedInstructions& operator=(CountedInstructions const&) = delete;

    ~CountedInstructions() { CALLGRIND_TOGGLE_COLLECT; }
};

/// Writes down what has been counted since the last time: `growth: what is done: 100`.
inline void writeDownInstructions(std::string const& name) {
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

} // namespace support
