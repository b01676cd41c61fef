// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/progress.hpp>

#include <import_explorer/display_width.hpp>

#include <algorithm>
#include <exception>

namespace explorer {

namespace {

constexpr std::chrono::milliseconds interval{100};
constexpr std::size_t widthOfLine = 80;
constexpr char const* eraseLine = "\r\x1b[K";

} // namespace

Progress::Progress(Output& terminal, std::size_t total, Clock::duration delay)
    : output(terminal),
      numberOfFiles(total),
      isEnabled(terminal.isTerminal() && delay != never),
      nextDrawing(Clock::now() + (isEnabled ? delay : Clock::duration::zero())) {}

Progress::~Progress() {
    try {
        erase();
    } catch (std::exception const&) {
        // The line stays, which does no harm.
        isShown = false;
    }
}

void Progress::show(std::size_t done, std::string const& name) {
    // A wrapped line could not be erased.
    std::size_t const columns = std::min(output.columns() - 1, widthOfLine);
    if (!isEnabled || columns < cutMark.size()) {
        return;
    }
    Clock::time_point const now = Clock::now();
    if (now < nextDrawing) {
        return;
    }
    nextDrawing = now + interval;
    isShown = true;
    std::string const line =
        std::to_string(done) + " of " + std::to_string(numberOfFiles) + " files  " + name;
    output.write(eraseLine + displayText(line, columns).text);
    output.flush();
}

void Progress::erase() {
    if (isShown) {
        isShown = false;
        output.write(eraseLine);
        output.flush();
    }
}

} // namespace explorer
