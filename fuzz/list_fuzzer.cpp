// SPDX-License-Identifier: BSL-1.0

/// \file
/// Interprets bytes as a program that creates lists and adds to them: after every step each list
/// must give the same answers as the model.

#include "input.hpp"

#include <support/list_program.hpp>
#include <support/twin_lists.hpp>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::Input input(data, size);
    support::ListProgramMaker maker([&input](std::size_t bound) { return input.below(bound); });
    support::ListProgram program{.steps = {}, .otherReach = maker.otherReach()};
    while (!input.isEmpty() && program.steps.size() < support::maximalNumberOfSteps) {
        program.steps.push_back(maker.step());
    }
    try {
        support::ListProgramRun().run(program);
    } catch (support::Difference const& difference) {
        std::cerr << program << '\n';
        fuzz::fail(difference.what());
    }
    return 0;
}
