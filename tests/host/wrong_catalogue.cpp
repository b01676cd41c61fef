// SPDX-License-Identifier: BSL-1.0

// Compiles without changes, and must not compile with any of the macros of catalogue_words.hpp.

#include "catalogue_words.hpp"

#include <host/catalogue.hpp>

int main() {
    // Not constexpr: the constructor checks the table at compile time in any case.
    lf::import::host::MessageCatalogue const catalogue({WORDS});
    return catalogue.wordsFor("MixedImportType") ? 0 : 1;
}
