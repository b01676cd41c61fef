// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/output.hpp>

#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace explorer {

namespace {

constexpr std::size_t pieceSize = 65536;

} // namespace

char const* OutputClosed::what() const noexcept {
    return "the output is closed";
}

void Output::write(std::string_view text) {
    pending += text;
    if (pending.size() >= pieceSize) {
        flush();
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

} // namespace explorer
