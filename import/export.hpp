// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Marks what leaves the library: everything else is compiled with hidden visibility.

/// Stands on every public type and function, so that type identity holds across library borders.
#define GLEIGEM_EXPORT __attribute__((visibility("default")))

/// Stands on private members of public types that are defined in source files.
#define GLEIGEM_NO_EXPORT __attribute__((visibility("hidden")))
