// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Exceptions told apart by a tag.

namespace foundation::core::except {

/// Each tag has a specialisation of its own.
template <typename Tag, typename Base>
class Exception;

} // namespace foundation::core::except
