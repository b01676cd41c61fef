// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The interface for tests: the host's settings, and a way to make it fail.

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>

namespace second_platform {

/// The nine services.
enum class Service : std::uint8_t {
    Identifier,
    ReservedWord,
    FeatureSwitch,
    SyntaxTree,
    RangeFactory,
    Specifier,
    SpecifierText,
    Message,
    Conversion,
};

inline constexpr std::size_t numberOfServices = 9;

struct Host {
    /// The feature switch: unlike other hosts, this one starts without package imports.
    bool packageImports = false;

    /// The number of questions to answer before one fails; none fails if empty.
    std::optional<std::size_t> questionsUntilFailure;
    /// Thrown by that question.
    std::exception_ptr failure;
    /// The number of failures of each service.
    std::array<std::size_t, numberOfServices> failures{};

    /// Called by every service before it answers.
    void ask(Service service);
};

/// The only host.
Host& host();

} // namespace second_platform
