// SPDX-License-Identifier: BSL-1.0

/// \file
/// Tests what the library needs of a platform, whatever language it is. Knows no answer of this one
/// but those it is given:
///
///     check_contract NAME SPECIFIER    a package name and a specifier with versions, both in ASCII
///
/// Exit status 1 when a promise is broken, 2 when the arguments are wrong.

#include <host_testing/contract.hpp>

#include <iostream>
#include <string>
#include <string_view>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: check_contract NAME SPECIFIER\n";
        return 2;
    }
    std::string_view const name = argv[1];
    std::string_view const specifier = argv[2];
    bool allKept = true;
    for (auto const& promise : lf::import::host_testing::checkContract(
             {name.begin(), name.end()}, {specifier.begin(), specifier.end()})) {
        std::cout << promise << '\n';
        allKept = allKept && promise.isKept();
    }
    return allKept ? 0 : 1;
}
