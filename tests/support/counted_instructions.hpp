// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Makes callgrind count the instructions of some work and store them under a name, for
/// tests/reliability/growth/growth_test.py. Has no effect without valgrind.

#include <valgrind/callgrind.h>

#include <string>

namespace support {

/// Instructions are counted during its lifetime.
class CountedInstructions {
  public:
    CountedInstructions() { CALLGRIND_TOGGLE_COLLECT; }

    CountedInstructions(CountedInstructions const&) = delete;
    CountedInstructions& operator=(CountedInstructions const&) = delete;

    ~CountedInstructions() { CALLGRIND_TOGGLE_COLLECT; }
};

/// Stores the instructions counted since the last call: `growth: what is done: 100`.
inline void writeDownInstructions(std::string const& name) {
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

} // namespace support
