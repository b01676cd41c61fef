// SPDX-License-Identifier: BSL-1.0

/// \file
/// Interprets bytes as the arguments of a command: library and model must agree on its meaning, for
/// both grammars and both ways of passing the arguments.

#include "input.hpp"

#include <model/parser_model.hpp>
#include <support/observed_entries.hpp>

#include <sstream>

namespace {

using lf::import::Behavior;
using model::Outcome;

using Arguments = std::vector<std::u16string>;

[[noreturn]] void failOn(Arguments const& arguments, std::vector<Outcome> const& fromLibrary,
                         std::vector<Outcome> const& fromModel) {
    std::ostringstream finding;
    finding << "import";
    for (std::u16string const& argument : arguments) {
        finding << ' ' << model::quoted(argument);
    }
    finding << "\nlibrary:";
    for (Outcome const& outcome : fromLibrary) {
        finding << "\n    " << outcome;
    }
    finding << "\nmodel:";
    for (Outcome const& outcome : fromModel) {
        finding << "\n    " << outcome;
    }
    fuzz::fail(finding.str());
}

void compare(Arguments const& arguments, Behavior behavior) {
    auto const expected = model::parseCommand(arguments, behavior == Behavior::WithPackageImports);
    for (auto* const parse : {support::parseTexts, support::parseTree}) {
        auto const actual = parse(arguments, behavior);
        if (actual != expected) {
            failOn(arguments, actual, expected);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Arguments const arguments = fuzz::takeLines({data, size});
    compare(arguments, Behavior::WithPackageImports);
    compare(arguments, Behavior::WithoutPackageImports);
    return 0;
}
