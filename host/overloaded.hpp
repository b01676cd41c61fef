// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// How to visit what is one of several cases.

namespace lf::import::host {

/// Several function objects as one, to visit a variant: `Overloaded{[](CommandEntry&) {},
/// [](CommandDiagnostic&) {}}`. A case without a function does not compile.
template <typename... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};

/// One of these functions.
template <typename... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

} // namespace lf::import::host
