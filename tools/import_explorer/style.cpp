// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/style.hpp>

namespace explorer {

namespace {

constexpr std::string_view sequenceFor(Role role) noexcept {
    switch (role) {
    case Role::Strong:
        return "\x1b[1m";
    case Role::Faint:
        return "\x1b[2m";
    case Role::Error:
        return "\x1b[1;31m";
    case Role::Warning:
        return "\x1b[1;35m";
    case Role::Note:
        return "\x1b[1;34m";
    case Role::Kind:
        return "\x1b[36m";
    }
    return {};
}

} // namespace

std::string Style::apply(Role role, std::string_view text) const {
    if (!isColoured || text.empty()) {
        return std::string(text);
    }
    return std::string(sequenceFor(role)).append(text).append(resetSequence);
}

} // namespace explorer
