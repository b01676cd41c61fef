// SPDX-License-Identifier: BSL-1.0

// Compiles without changes, and must not compile with any of the macros of catalogue_words.hpp.

#include "catalogue_words.hpp"

#include <host/catalogue.hpp>

int main() {
    // Not constexpr: the constructor checks the table at compile time in any case. With =, since
    // g++ 14 rejects other initializations of a local constant by any consteval constructor.
    auto const catalogue = lf::import::host::MessageCatalogue({WORDS});
    return catalogue.wordsFor("MixedImportType") ? 0 : 1;
}
