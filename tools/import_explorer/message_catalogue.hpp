// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The explorer's texts for the library's messages.

#include <host/catalogue.hpp>

namespace explorer {

extern lf::import::host::MessageCatalogue const messageCatalogue;

} // namespace explorer
