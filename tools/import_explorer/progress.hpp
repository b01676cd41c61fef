// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A progress line on the terminal for long runs.

#include <import_explorer/output.hpp>

#include <chrono>
#include <cstddef>
#include <string>

namespace explorer {

/// Redraws one line in place. Short runs show nothing.
class Progress {
  public:
    using Clock = std::chrono::steady_clock;

    static constexpr Clock::duration patience = std::chrono::milliseconds(500);
    static constexpr Clock::duration never = Clock::duration::max();

    /// \param total the number of files of the run.
    /// \param delay how long to show nothing; `never` if the terminal cannot redraw a line.
    Progress(Output& terminal, std::size_t total, Clock::duration delay);
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress();

    /// Shows that \p done files are done and that \p name is next.
    void show(std::size_t done, std::string const& name);

    /// Removes the line. Call this before anything else is written to the terminal.
    void erase();

  private:
    Output& output;
    std::size_t numberOfFiles;
    bool isEnabled;
    Clock::time_point nextDrawing;
    bool isShown = false;
};

} // namespace explorer
