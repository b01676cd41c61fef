// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Writing to a file descriptor so that every failure is noticed.

#include <import_explorer/text_sink.hpp>

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>

namespace explorer {

/// Nobody reads the output any more, which is the reader's good right.
class OutputClosed : public std::exception {
  public:
    char const* what() const noexcept override;
};

/// Collects text and writes it in large pieces to a file descriptor, which it does not own. A
/// closed pipe is told from other failures only if the process ignores SIGPIPE.
class Output final : public ITextSink {
  public:
    explicit Output(int fileDescriptor);

    /// \throws OutputClosed, std::system_error
    void write(std::string_view text) override;

    /// Writes all that is still collected. To be called at the end: destruction writes nothing.
    ///
    /// \throws OutputClosed, std::system_error
    void flush();

    bool isTerminal() const noexcept;

    /// The columns of the terminal, or of a usual one where it does not tell.
    std::size_t columns() const noexcept;

    /// Lets a signal that ends the program, such as that of Ctrl-C, leave the terminal without the
    /// colours of the text that it cuts.
    void resetColoursOnInterrupt() const;

  private:
    int descriptor;
    std::string pending;
};

} // namespace explorer
