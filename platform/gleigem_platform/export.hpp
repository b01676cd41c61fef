// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Marks what leaves the platform library: everything else is compiled with hidden visibility.
/// The build defines GLEIGEM_PLATFORM_BUILDING within the shared library, and
/// GLEIGEM_PLATFORM_STATIC in the static one and in its users; only Windows tells these apart.

#if defined(_WIN32)
#if defined(GLEIGEM_PLATFORM_STATIC)
#define GLEIGEM_PLATFORM_EXPORT
#elif defined(GLEIGEM_PLATFORM_BUILDING)
#define GLEIGEM_PLATFORM_EXPORT __declspec(dllexport)
#else
#define GLEIGEM_PLATFORM_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__)
/// Stands on every public type and function, so that type identity holds across library borders.
#define GLEIGEM_PLATFORM_EXPORT __attribute__((visibility("default")))
#else
#define GLEIGEM_PLATFORM_EXPORT
#endif
