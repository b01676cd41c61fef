// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The first of many, with the number of those left out.

#include <cstddef>
#include <utility>
#include <vector>

namespace explorer {

/// Lists so few elements that a file cannot make a report grow with the square of its size.
template <typename Element>
struct Capped {
    std::vector<Element> listed;
    std::size_t omitted = 0;

    /// Lists \p element unless there are \p limit already.
    void add(Element element, std::size_t limit) {
        if (listed.size() < limit) {
            listed.push_back(std::move(element));
        } else {
            ++omitted;
        }
    }
};

} // namespace explorer
