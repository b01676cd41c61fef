// SPDX-License-Identifier: BSL-1.0

/// \file
/// Tests what the library requires of a platform, for any language. It takes two examples from the
/// language:
///
///     check_contract NAME SPECIFIER    a package name and a specifier with versions, both in ASCII
///
/// Exits with 1 if a requirement is not met, 2 if the arguments are wrong.

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
