// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What tests see of this host: its settings, and a way to let it fail.

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

    /// How many questions are answered before one fails; none fails without a number.
    std::optional<std::size_t> questionsUntilFailure;
    /// What that question throws.
    std::exception_ptr failure;
    /// How many questions each service failed at.
    std::array<std::size_t, numberOfServices> failures{};

    /// Called by every service before it answers.
    void ask(Service service);
};

/// The one host.
Host& host();

} // namespace second_platform
