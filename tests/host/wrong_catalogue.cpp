// SPDX-License-Identifier: BSL-1.0

// Compiles as it stands, and must not with any of the macros that catalogue_words.hpp knows.

#include "catalogue_words.hpp"

#include <host/catalogue.hpp>

int main() {
    // Not constexpr: the check is the catalogue's own affair.
    lf::import::host::MessageCatalogue const catalogue({WORDS});
    return catalogue.wordsFor("MixedImportType") ? 0 : 1;
}
