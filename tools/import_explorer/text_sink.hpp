// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Destination of reports.

#include <string_view>

namespace explorer {

/// Receives a text in pieces, so that it need not be in memory as a whole.
class ITextSink {
  public:
    ITextSink() = default;
    ITextSink(ITextSink const&) = delete;
    ITextSink& operator=(ITextSink const&) = delete;
    virtual ~ITextSink() = default;

    virtual void write(std::string_view text) = 0;
};

} // namespace explorer
