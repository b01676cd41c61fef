// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/progress.hpp>

#include <import_explorer/display_width.hpp>

#include <exception>

namespace explorer {

namespace {

constexpr std::chrono::milliseconds patience{500};
constexpr std::chrono::milliseconds interval{100};
constexpr std::size_t widthOfName = 50;
constexpr char const* eraseLine = "\r\x1b[K";

} // namespace

Progress::Progress(Output& terminal, std::size_t total)
    : output(terminal),
      numberOfFiles(total),
      isEnabled(terminal.isTerminal()),
      nextDrawing(Clock::now() + patience) {}

Progress::~Progress() {
    try {
        erase();
    } catch (std::exception const&) {
        // Then the line stays; nothing depends on it.
        isShown = false;
    }
}

void Progress::show(std::size_t done, std::string const& name) {
    if (!isEnabled) {
        return;
    }
    Clock::time_point const now = Clock::now();
    if (now < nextDrawing) {
        return;
    }
    nextDrawing = now + interval;
    isShown = true;
    output.write(eraseLine + std::to_string(done) + " of " + std::to_string(numberOfFiles) +
                 " files  " + displayText(name, widthOfName).text);
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
