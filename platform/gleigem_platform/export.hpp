// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Marks exported symbols of the platform library; everything else has hidden visibility.
/// The build defines GLEIGEM_PLATFORM_BUILDING within the shared library, and
/// GLEIGEM_PLATFORM_STATIC in the static one and in its users; they only matter on Windows.

#if defined(_WIN32)
#if defined(GLEIGEM_PLATFORM_STATIC)
#define GLEIGEM_PLATFORM_EXPORT
#elif defined(GLEIGEM_PLATFORM_BUILDING)
#define GLEIGEM_PLATFORM_EXPORT __declspec(dllexport)
#else
#define GLEIGEM_PLATFORM_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__)
/// Marks every public type and function, so that types are the same in all libraries.
#define GLEIGEM_PLATFORM_EXPORT __attribute__((visibility("default")))
#else
#define GLEIGEM_PLATFORM_EXPORT
#endif
