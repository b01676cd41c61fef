// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Combines function objects for std::visit.

namespace lf::import::host {

/// Several function objects as one, for std::visit:
/// `Overloaded{[](CommandEntry&) {}, [](CommandDiagnostic&) {}}`. An alternative without a function
/// does not compile.
template <typename... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};

/// One of these functions.
template <typename... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

} // namespace lf::import::host
