// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The version of the headers, for programs that support several. It follows Semantic Versioning:
/// while the first number is 0, the second one changes with the interface.

/// The first number of the version.
#define GLEIGEM_VERSION_MAJOR 0

/// The second number of the version.
#define GLEIGEM_VERSION_MINOR 1

/// The third number of the version.
#define GLEIGEM_VERSION_PATCH 0

/// The version as one number that grows with it: `#if GLEIGEM_VERSION >= 10203` from 1.2.3 on.
#define GLEIGEM_VERSION                                                                            \
    (GLEIGEM_VERSION_MAJOR * 10000 + GLEIGEM_VERSION_MINOR * 100 + GLEIGEM_VERSION_PATCH)
