// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/output.hpp>

#include <import_explorer/style.hpp>

#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace explorer {

namespace {

constexpr std::size_t pieceSize = 65536;
constexpr std::size_t usualColumns = 80;

// Signal handlers can only access globals.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
volatile std::sig_atomic_t colouredTerminal = -1;

extern "C" void resetColours(int signal) {
    // If this fails, the terminal keeps its colours.
    static_cast<void>(::write(colouredTerminal, resetSequence.data(), resetSequence.size()) == 0);
    static_cast<void>(std::signal(signal, SIG_DFL));
    static_cast<void>(std::raise(signal));
}

} // namespace

Output::Output(int fileDescriptor) : descriptor(fileDescriptor) {
    pending.reserve(2 * pieceSize);
}

char const* OutputClosed::what() const noexcept {
    return "the output is closed";
}

void Output::write(std::string_view text) {
    while (!text.empty()) {
        std::string_view const piece = text.substr(0, pieceSize);
        pending += piece;
        text.remove_prefix(piece.size());
        if (pending.size() >= pieceSize) {
            flush();
        }
    }
}

void Output::flush() {
    std::string_view rest = pending;
    while (!rest.empty()) {
        ssize_t const written = ::write(descriptor, rest.data(), rest.size());
        if (written >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EPIPE) {
            throw OutputClosed();
        } else if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category());
        }
    }
    pending.clear();
}

bool Output::isTerminal() const noexcept {
    return ::isatty(descriptor) == 1;
}

std::size_t Output::columns() const noexcept {
    winsize size{};
    // ioctl() is variadic. NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg)
    bool const isKnown = ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : usualColumns;
}

void Output::resetColoursOnInterrupt() const {
    colouredTerminal = descriptor;
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
        // The parent process may have chosen to ignore the signal.
        if (std::signal(signal, resetColours) == SIG_IGN) {
            static_cast<void>(std::signal(signal, SIG_IGN));
        }
    }
}

} // namespace explorer
