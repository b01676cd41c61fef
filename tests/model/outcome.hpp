// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// An element of a parse result as plain data, used to compare the model with the library.

#include <host_testing/quoted.hpp>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace model {

/// The four kinds of element.
enum class OutcomeKind : std::uint8_t { FullyQualified, Wildcard, Package, Invalid };

/// One element. Texts that do not apply to its kind are empty.
struct Outcome {
    OutcomeKind kind{};
    /// The argument that the element belongs to.
    std::uint64_t index = 0;
    /// Of fully qualified imports and packages.
    std::u16string introducedName;
    /// Of fully qualified imports and wildcards.
    std::u16string rawArgument;
    /// Of fully qualified imports and wildcards.
    std::u16string rootElement;
    /// Of packages: the text form of the specifier.
    std::u16string specifier;
    /// Of invalid elements, like all further fields.
    std::string catalogue;
    std::string key;
    std::vector<std::u16string> messageArguments;
    bool isWarning = false;

    friend bool operator==(Outcome const&, Outcome const&) = default;
};

using lf::import::host_testing::quoted;

/// One line of readable text.
std::ostream& operator<<(std::ostream& stream, Outcome const& outcome);

} // namespace model
