// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The subjects of the benchmark suite, one source file each.
///
/// Names read `subject/contestant/circumstance:value`; the library's own contestant is `gleigem`,
/// the others are its floors and the literal model.

namespace benchmarks {

void registerParsing();
void registerAdding();
void registerLookup();
void registerEnumeration();
void registerLifetime();

} // namespace benchmarks
