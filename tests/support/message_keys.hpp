// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The keys of messages in the form that tests use.

#include <import/messages.hpp>

#include <set>
#include <string>
#include <tuple>

namespace support {

/// The keys of \p definitions, such as lf::import::parserMessages.
template <typename... Definitions>
std::set<std::string> keyTextsOf(std::tuple<Definitions...> const& definitions) {
    std::set<std::string> texts;
    for (lf::import::MessageKey const& message : lf::import::keysOf(definitions)) {
        texts.emplace(message.key);
    }
    return texts;
}

} // namespace support
