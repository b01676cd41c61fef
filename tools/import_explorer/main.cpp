// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/explorer.hpp>
#include <import_explorer/options.hpp>
#include <import_explorer/output.hpp>

#include <unistd.h>

#include <csignal>
#include <exception>
#include <iostream>
#include <new>
#include <system_error>
#include <variant>

namespace {

using namespace explorer;

ExitStatus run(int argc, char const* const* argv) {
    Output output(STDOUT_FILENO);
    Output errorOutput(STDERR_FILENO);
    auto const parsed = parseOptions(argc, argv);
    if (auto const* notice = std::get_if<Notice>(&parsed)) {
        Output& target = notice->status == ExitStatus::Success ? output : errorOutput;
        target.write(notice->text);
        target.flush();
        return notice->status;
    }
    return explore(std::get<Options>(parsed), output, errorOutput);
}

ExitStatus fail(char const* context, std::exception const& error) {
    std::cerr << "import_explorer: error: " << context << error.what() << '\n';
    return ExitStatus::Failure;
}

ExitStatus failForMemory() {
    std::cerr << "import_explorer: error: out of memory\n";
    return ExitStatus::OutOfMemory;
}

ExitStatus runGuarded(int argc, char const* const* argv) {
    try {
        return run(argc, argv);
    } catch (OutputClosed const&) {
        return ExitStatus::Success;
    } catch (std::system_error const& error) {
        return fail("cannot write the output: ", error);
    } catch (std::bad_alloc const&) {
        return failForMemory();
    } catch (std::exception const& error) {
        return fail("", error);
    }
}

} // namespace

int main(int argc, char** argv) {
    // Writing to a closed pipe then fails with an error, which ends the program cleanly.
    std::signal(SIGPIPE, SIG_IGN);
    return static_cast<int>(runGuarded(argc, argv));
}
