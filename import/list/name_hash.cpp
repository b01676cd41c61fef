// SPDX-License-Identifier: BSL-1.0

#include <import/list/name_hash.hpp>

#if defined(_WIN32)
#include <random>
#else
#include <cerrno>
#include <sys/random.h>
#include <system_error>
#include <unistd.h>
#endif

namespace lf::import {

HashKey const& HashKey::ofThisProcess() {
    static HashKey const key;
    return key;
}

#if defined(_WIN32)

HashKey::HashKey() {
    std::random_device device;
    seed = std::uint64_t{device()} << 32 | device();
}

#else

// Not std::random_device, which reads a file in some standard libraries.
HashKey::HashKey() {
    if (getentropy(&seed, sizeof seed) != 0) {
        throw std::system_error(errno, std::generic_category(), "no key for the hashes of names");
    }
}

#endif

} // namespace lf::import
