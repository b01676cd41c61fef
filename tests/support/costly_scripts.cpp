// SPDX-License-Identifier: BSL-1.0
#include <support/costly_scripts.hpp>

#include <functional>
#include <string>

namespace support {

namespace {

/// `a1b a2b a3b`, where text(1) is `a1b` and so on.
std::string repeat(std::size_t times, std::function<std::string(std::string const&)> const& text) {
    std::string result;
    for (std::size_t number = 1; number <= times; ++number) {
        result += text(std::to_string(number));
    }
    return result;
}

std::string copies(std::size_t times, std::string_view text) {
    return repeat(times, [&](std::string const&) { return std::string(text); });
}

using Number = std::string const&;

constexpr CostlyScript scripts[] = {
    {"conflicts with an import of a long text",
     [](std::size_t size) {
         return "import p@1" + copies(size, ",1") + "\n" + copies(size, "import p\n");
     },
     150, 70},
    {"conflicts with an import of a long text in one command",
     [](std::size_t size) {
         return "import a" + copies(size, "b") + ".p\nimport" + copies(size, " p") + "\n";
     },
     150, 20},
    {"uses of a name from an import of a long text",
     [](std::size_t size) {
         return "import a" + copies(size, "b") + ".x\n" + copies(size, "use x\n");
     },
     150, 70},
    {"uses that a wildcard of a long text may supply",
     [](std::size_t size) {
         return "import a" + copies(size, "b") + ".*\n" + copies(size, "use x\n");
     },
     150, 70},
    {"a name of marks that take no width",
     [](std::size_t size) {
         return "import a.e" + copies(size, "\u0301") + "\nimport e" + copies(size, "\u0301") +
                "\n" + copies(size, "use e\u0301\n");
     },
     150, 20},
    {"a scope whose name is of marks that take no width",
     [](std::size_t size) {
         return "scope e" + copies(size, "\u0301") + " {\nimport a.b\n" + copies(size, "use b\n");
     },
     150, 70},
    {"wildcards and uses in turn",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "import w" + n + ".*\nuse x\n"; });
     },
     200, 25},
    {"wildcards that are hidden by others and uses in turn",
     [](std::size_t size) {
         std::string const all = repeat(size, [](Number n) { return " w" + n + ".*"; });
         return "import" + all + "\nscope s {\nimport" + all + "\n" +
                repeat(size, [](Number n) { return "import v" + n + ".*\nuse x\n"; });
     },
     200, 25},
    {"imports and scopes that inherit them",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "import a.b" + n + "\n"; }) +
                copies(size, "scope s {\n}\n");
     },
     150, 150},
    {"imports and scopes that each hide one",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "import a.b" + n + "\n"; }) +
                repeat(size, [](Number n) { return "scope s {\nimport b" + n + "\n}\n"; });
     },
     150, 150},
    {"scopes within one that hides all names",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "import a" + n + ".x\n"; }) +
                "scope s {\nimport x\n" + copies(size, "scope t {\nimport y\n}\n");
     },
     150, 150},
    {"an import of a long text and scopes that inherit it",
     [](std::size_t size) {
         return "import a" + copies(10 * size, "b") + ".x\n" +
                copies(size, "scope t {\nimport x\n}\n");
     },
     150, 150},
    {"unknown uses where one package hides all names",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "import a" + n + ".x\n"; }) +
                "scope s {\nimport x\n" + copies(size, "use zz\n");
     },
     150, 100},
    {"unknown uses of long names, all alike",
     [](std::size_t size) {
         std::string const name(30, 'x');
         return repeat(300, [&](Number n) { return "import a." + name + n + "\n"; }) +
                repeat(size, [&](Number n) { return "use y" + n + name + "\n"; });
     },
     100, 6},
    {"nested scopes with uses",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "scope s{\nimport a.b" + n + "\nuse z\n"; });
     },
     280, 35},
    {"uses of dotted names of many segments",
     [](std::size_t size) {
         return "import a" + copies(size, ".b") + "@1\nuse " + copies(size, "c.") + "d\n";
     },
     1000, 250},
    {"nested scopes with dotted imports",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "scope s{\nimport a.b" + n + "\n"; });
     },
     280, 35},
    {"nested scopes with imports of one name",
     [](std::size_t size) {
         return repeat(size, [](Number n) { return "scope s{\nimport a" + n + ".x\nuse x\n"; });
     },
     280, 35},
    {"nested scopes without imports",
     [](std::size_t size) { return "import a.b\n" + copies(size, "scope s{ use b;"); }, 1100, 130},
    {"one line of problems", [](std::size_t size) { return copies(size, "} "); }, 250, 30},
    {"many lines of problems", [](std::size_t size) { return copies(size, "x\n"); }, 500, 60},
    {"one command with many arguments",
     [](std::size_t size) { return "import " + repeat(size, [](Number n) { return " p" + n; }); },
     250, 30},
    {"one command with the same argument over and over",
     [](std::size_t size) { return "import" + copies(size, " a"); }, 500, 60},
    {"many wrong arguments", [](std::size_t size) { return copies(size, "import 1\n"); }, 500, 60},
    {"a long wrong argument", [](std::size_t size) { return "import 1" + copies(size, "1"); }, 2000,
     250},
    {"a long use", [](std::size_t size) { return "use " + copies(size, "図"); }, 5000, 600},
    {"names that are printed as their numbers",
     [](std::size_t size) { return copies(size, "import \x1b\x1b\x1b\n"); }, 500, 60},
    {"unused imports each of which has a fix when the one before is gone",
     [](std::size_t size) {
         std::string const packages =
             repeat(size, [](Number n) { return "import p" + n + "\nuse p" + n + "\n"; });
         std::string names;
         for (std::size_t number = 1; number < size; ++number) {
             names += "scope s {\nimport p" + std::to_string(number + 1) + ".p" +
                      std::to_string(number) + "\n}\n";
         }
         return "scope p {\n" + packages + "}\n" + names;
     },
     40, 25, true},
};

} // namespace

std::span<CostlyScript const> const costlyScripts = scripts;

} // namespace support
