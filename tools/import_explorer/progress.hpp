// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A line on the terminal that tells how far a long run is.

#include <import_explorer/output.hpp>

#include <chrono>
#include <cstddef>
#include <string>

namespace explorer {

/// Draws one line, again and again in the same place. Short runs show nothing.
class Progress {
  public:
    using Clock = std::chrono::steady_clock;

    static constexpr Clock::duration patience = std::chrono::milliseconds(500);
    static constexpr Clock::duration never = Clock::duration::max();

    /// \param total the number of files of the run.
    /// \param delay how long a run shows nothing; never for a terminal that cannot draw in place.
    Progress(Output& terminal, std::size_t total, Clock::duration delay);
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress();

    /// \p done files are done, \p name is the next.
    void show(std::size_t done, std::string const& name);

    /// Removes the line; to be called before anything else is written to the terminal.
    void erase();

  private:
    Output& output;
    std::size_t numberOfFiles;
    bool isEnabled;
    Clock::time_point nextDrawing;
    bool isShown = false;
};

} // namespace explorer
