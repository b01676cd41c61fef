// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The subjects of the benchmark suite, one source file each.
///
/// Names have the form `subject/contestant/circumstance:value`. The library is the contestant
/// `gleigem`; the others are its floors and the reference model.

namespace benchmarks {

void registerParsing();
void registerAdding();
void registerLookup();
void registerEnumeration();
void registerLifetime();

} // namespace benchmarks
