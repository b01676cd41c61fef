// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Short names for expected outcomes, for readable tables.

#include <model/outcome.hpp>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace support {

inline model::Outcome fullyQualified(std::uint64_t index, std::u16string raw, std::u16string root,
                                     std::u16string introducedName) {
    return {.kind = model::OutcomeKind::FullyQualified,
            .index = index,
            .introducedName = std::move(introducedName),
            .rawArgument = std::move(raw),
            .rootElement = std::move(root),
            .specifier = {},
            .catalogue = {},
            .key = {},
            .messageArguments = {}};
}

inline model::Outcome wildcard(std::uint64_t index, std::u16string raw, std::u16string root) {
    return {.kind = model::OutcomeKind::Wildcard,
            .index = index,
            .introducedName = {},
            .rawArgument = std::move(raw),
            .rootElement = std::move(root),
            .specifier = {},
            .catalogue = {},
            .key = {},
            .messageArguments = {}};
}

inline model::Outcome package(std::uint64_t index, std::u16string specifier,
                              std::u16string introducedName) {
    return {.kind = model::OutcomeKind::Package,
            .index = index,
            .introducedName = std::move(introducedName),
            .rawArgument = {},
            .rootElement = {},
            .specifier = std::move(specifier),
            .catalogue = {},
            .key = {},
            .messageArguments = {}};
}

inline model::Outcome invalid(std::uint64_t index, std::string key, bool isWarning,
                              std::vector<std::u16string> messageArguments) {
    return {.kind = model::OutcomeKind::Invalid,
            .index = index,
            .introducedName = {},
            .rawArgument = {},
            .rootElement = {},
            .specifier = {},
            .catalogue = "KELDAR:lang",
            .key = std::move(key),
            .messageArguments = std::move(messageArguments),
            .isWarning = isWarning};
}

inline model::Outcome error(std::uint64_t index, std::string key,
                            std::vector<std::u16string> messageArguments = {}) {
    return invalid(index, std::move(key), false, std::move(messageArguments));
}

inline model::Outcome warning(std::uint64_t index, std::string key,
                              std::vector<std::u16string> messageArguments) {
    return invalid(index, std::move(key), true, std::move(messageArguments));
}

} // namespace support
