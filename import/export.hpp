// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Marks exported symbols; everything else has hidden visibility.
///
/// On Windows a shared library exports what is marked and its users import it, so that the marks
/// depend on who reads them: the build defines GLEIGEM_BUILDING within the shared library, and
/// GLEIGEM_STATIC in the static one and in its users. Elsewhere the marks are always the same: the
/// types stay one type even where two libraries each contain the static one.

#if defined(_WIN32)
#if defined(GLEIGEM_STATIC)
#define GLEIGEM_EXPORT
#elif defined(GLEIGEM_BUILDING)
#define GLEIGEM_EXPORT __declspec(dllexport)
#else
#define GLEIGEM_EXPORT __declspec(dllimport)
#endif
#define GLEIGEM_NO_EXPORT
#elif defined(__GNUC__)
/// Marks every public type and function, so that types are the same in all libraries.
#define GLEIGEM_EXPORT __attribute__((visibility("default")))

/// Marks private members of public types that are defined in source files.
#define GLEIGEM_NO_EXPORT __attribute__((visibility("hidden")))
#else
#define GLEIGEM_EXPORT
#define GLEIGEM_NO_EXPORT
#endif
