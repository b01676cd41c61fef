// SPDX-License-Identifier: BSL-1.0

/// \file
/// Loads two libraries with local symbols, and lets each catch the other's exceptions and use the
/// other's lists. Prints a line for each check; fails if one does.
///
/// Has no test framework, so that it can be built with any standard library.

#include "side.hpp"

#include <dlfcn.h>

#include <cstdlib>
#include <iostream>
#include <string>

namespace {

using identity::List;
using identity::Side;
using identity::Thrower;

int numberOfChecks = 0;
int numberOfFailures = 0;

void check(std::string const& what, bool holds) {
    ++numberOfChecks;
    numberOfFailures += holds ? 0 : 1;
    std::cout << (holds ? "holds: " : "FAILS: ") << what << '\n';
}

Side const& load(char const* library) {
    void* const handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void* const function = handle == nullptr ? nullptr : dlsym(handle, identity::sideFunction);
    if (function == nullptr) {
        std::cerr << dlerror() << '\n';
        std::exit(2);
    }
    return *reinterpret_cast<Side const* (*)()>(function)();
}

void checkExceptions(Side const& thrower, Side const& catcher, std::string const& where) {
    Thrower const empty = thrower.throwEmptyHolder;
    check("an empty holder is caught as itself " + where, catcher.catchEmptyHolder(empty));
    check("an empty holder is caught as std::exception " + where,
          catcher.catchEmptyHolderAsStandardException(empty));
    check("an empty holder is copied by boost::current_exception " + where,
          catcher.catchEmptyHolderFromBoost(empty));
    check("an empty holder is held by std::current_exception " + where,
          catcher.catchEmptyHolderFromExceptionPointer(empty));
    check("an invalid specifier is caught as itself " + where,
          catcher.catchInvalidSpecifier(thrower.throwInvalidSpecifier));
    check("an invalid specifier is caught as std::exception " + where,
          catcher.catchInvalidSpecifierAsStandardException(thrower.throwInvalidSpecifier));
}

void checkLists(Side const& maker, Side const& user, std::string const& where) {
    List const foreign = maker.makeForeignList();
    check("a foreign list is recognised by dynamic_cast " + where, user.isForeign(foreign));
    check("a foreign list is asked as parent " + where, user.isSeenInside(foreign));

    List const own = maker.makeList();
    check("a list of the library is not foreign " + where, !user.isForeign(own));
    check("a list of the library is asked as parent " + where, user.isSeenInside(own));
}

} // namespace

int main() {
    Side const& first = load(FIRST_LIBRARY);
    Side const& second = load(SECOND_LIBRARY);

    struct {
        Side const& from;
        Side const& to;
        char const* where;
    } const directions[]{{first, first, "within the first library"},
                         {first, second, "from the first library in the second"},
                         {second, first, "from the second library in the first"},
                         {second, second, "within the second library"}};

    for (auto const& [from, to, where] : directions) {
        checkExceptions(from, to, where);
        checkLists(from, to, where);
    }
    std::cout << numberOfChecks - numberOfFailures << " of " << numberOfChecks << " checks hold.\n";
    return numberOfFailures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
