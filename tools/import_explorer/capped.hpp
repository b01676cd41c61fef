// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A list with a limit, and the number of elements left out.

#include <cstddef>
#include <utility>
#include <vector>

namespace explorer {

/// Keeps a report from growing with the square of the size of a file.
template <typename Element>
struct Capped {
    std::vector<Element> listed;
    std::size_t omitted = 0;

    /// Lists \p element, or counts it as omitted if there are \p limit already.
    void add(Element element, std::size_t limit) {
        if (listed.size() < limit) {
            listed.push_back(std::move(element));
        } else {
            ++omitted;
        }
    }
};

} // namespace explorer
