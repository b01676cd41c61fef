// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/output.hpp>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <stdexcept>
#include <string>

namespace explorer {
namespace {

class Pipe {
  public:
    Pipe() {
        if (::pipe2(descriptors.data(), O_NONBLOCK | O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe can be made");
        }
    }

    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;

    ~Pipe() {
        closeReadingEnd();
        ::close(descriptors[1]);
    }

    int writingEnd() const noexcept { return descriptors[1]; }

    void closeReadingEnd() noexcept {
        if (descriptors[0] >= 0) {
            ::close(descriptors[0]);
            descriptors[0] = -1;
        }
    }

    /// Reads everything that has been written, and returns its size.
    std::size_t take() const {
        std::string buffer(1U << 17U, ' ');
        ssize_t const count = ::read(descriptors[0], buffer.data(), buffer.size());
        return count < 0 ? 0 : static_cast<std::size_t>(count);
    }

  private:
    std::array<int, 2> descriptors{-1, -1};
};

TEST(Output, KeepsWhatIsWrittenUntilItIsFlushed) {
    Pipe const pipe;
    Output output(pipe.writingEnd());
    output.write("a line\n");
    output.write("and another\n");
    EXPECT_EQ(pipe.take(), 0U);
    output.flush();
    EXPECT_EQ(pipe.take(), 19U);
    output.flush();
    EXPECT_EQ(pipe.take(), 0U) << "it is written only once";
}

TEST(Output, KeepsNoMoreThanAPiece) {
    constexpr std::size_t piece = 65536;
    Pipe const pipe;
    Output output(pipe.writingEnd());
    output.write(std::string(piece - 1, 'x'));
    EXPECT_EQ(pipe.take(), 0U);
    output.write("x");
    EXPECT_EQ(pipe.take(), piece);
}

TEST(Output, SaysThatNobodyReads) {
    std::signal(SIGPIPE, SIG_IGN);
    Pipe pipe;
    Output output(pipe.writingEnd());
    pipe.closeReadingEnd();
    output.write("a line\n");
    EXPECT_THROW(output.flush(), OutputClosed);
}

} // namespace
} // namespace explorer
