// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Buffered writing to a file descriptor that detects every failure.

#include <import_explorer/text_sink.hpp>

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>

namespace explorer {

/// The reader has closed the output, for example after `head`. This is not an error.
class OutputClosed : public std::exception {
  public:
    char const* what() const noexcept override;
};

/// Buffers text for a file descriptor, which it does not own. OutputClosed is only thrown if the
/// process ignores SIGPIPE.
class Output final : public ITextSink {
  public:
    explicit Output(int fileDescriptor);

    /// \throws OutputClosed, std::system_error
    void write(std::string_view text) override;

    /// Writes all buffered text. Call this at the end: the destructor writes nothing.
    ///
    /// \throws OutputClosed, std::system_error
    void flush();

    bool isTerminal() const noexcept;

    /// The width of the terminal in columns, or a default if it is unknown.
    std::size_t columns() const noexcept;

    /// Makes a signal that ends the program, such as SIGINT, first reset the colours of the
    /// terminal.
    void resetColoursOnInterrupt() const;

  private:
    int descriptor;
    std::string pending;
};

} // namespace explorer
