// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Where reports go.

#include <string_view>

namespace explorer {

/// Takes a text piece by piece, so that nobody needs to have it whole.
class ITextSink {
  public:
    ITextSink() = default;
    ITextSink(ITextSink const&) = delete;
    ITextSink& operator=(ITextSink const&) = delete;
    virtual ~ITextSink() = default;

    virtual void write(std::string_view text) = 0;
};

} // namespace explorer
