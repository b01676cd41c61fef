// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/progress.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pty.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string>

namespace explorer {
namespace {

/// A pseudo-terminal with a number of columns; the test reads what it displays.
class Terminal {
  public:
    explicit Terminal(unsigned short columns) {
        winsize size{24, columns, 0, 0};
        if (::openpty(&screen, &line, nullptr, nullptr, &size) != 0) {
            throw std::runtime_error("no terminal");
        }
    }

    Terminal(Terminal const&) = delete;
    Terminal& operator=(Terminal const&) = delete;

    ~Terminal() {
        ::close(screen);
        ::close(line);
    }

    int descriptor() const { return line; }

    /// What has been written. Blocks until something is.
    std::string read() const {
        std::array<char, 4096> bytes{};
        ssize_t const size = ::read(screen, bytes.data(), bytes.size());
        return {bytes.data(), static_cast<std::size_t>(size)};
    }

  private:
    int screen = -1;
    int line = -1;
};

std::string showOn(unsigned short columns, std::string const& name) {
    Terminal const terminal(columns);
    Output output(terminal.descriptor());
    Progress progress(output, 9, Progress::Clock::duration::zero());
    progress.show(1, name);
    return terminal.read();
}

constexpr char const* eraseLine = "\r\x1b[K";

TEST(Progress, FitsIntoTheLine) {
    EXPECT_EQ(showOn(24, "a.import"), eraseLine + std::string("1 of 9 files  a.import"));
    EXPECT_EQ(showOn(22, "a.import"), eraseLine + std::string("1 of 9 files  a.im..."));
    EXPECT_EQ(showOn(10, "a.import"), eraseLine + std::string("1 of 9..."));
    EXPECT_EQ(showOn(0, "a.import"), eraseLine + std::string("1 of 9 files  a.import"))
        << "a terminal of unknown width";
}

TEST(Progress, ShowsNothingWhereThereIsNoRoom) {
    Terminal const terminal(3);
    Output output(terminal.descriptor());
    {
        Progress progress(output, 9, Progress::Clock::duration::zero());
        progress.show(1, "a.import");
    }
    output.write("end");
    output.flush();
    EXPECT_EQ(terminal.read(), "end");
}

TEST(Progress, ShowsNothingOnATerminalThatCannotDrawInPlace) {
    Terminal const terminal(80);
    Output output(terminal.descriptor());
    {
        Progress progress(output, 9, Progress::never);
        progress.show(1, "a.import");
    }
    output.write("end");
    output.flush();
    EXPECT_EQ(terminal.read(), "end");
}

TEST(Progress, ErasesWhatItHasShown) {
    Terminal const terminal(80);
    Output output(terminal.descriptor());
    {
        Progress progress(output, 9, Progress::Clock::duration::zero());
        progress.show(1, "a.import");
        terminal.read();
    }
    EXPECT_EQ(terminal.read(), eraseLine);
}

} // namespace
} // namespace explorer
