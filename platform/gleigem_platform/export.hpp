// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Marks what leaves the platform library: everything else is compiled with hidden visibility.

/// Stands on every public type and function, so that type identity holds across library borders.
#define GLEIGEM_PLATFORM_EXPORT __attribute__((visibility("default")))
