// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Runs programs as a user does: by a line for the shell.

#include <filesystem>
#include <string>
#include <string_view>

namespace support {

/// What a run left behind.
struct Outcome {
    int status = -1;
    std::string output;
    std::string errorOutput;
};

/// Runs \p commandLine in \p folder by the shell, in which `$explorer` is the program under test.
Outcome runInShell(std::string const& commandLine, std::filesystem::path const& folder);

/// As runInShell, but all three streams are a terminal; both kinds of output are one then.
Outcome runOnTerminal(std::string const& commandLine, std::filesystem::path const& folder);

/// Whether the machine lets this process make a pseudo-terminal; some containers do not.
bool canMakeTerminals();

/// A folder of one test, removed with all that is in it when the test is over.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder();

    std::filesystem::path const& path() const noexcept { return folder; }

    /// Writes a file, with the folders above it.
    void write(std::filesystem::path const& name, std::string_view contents) const;

  private:
    std::filesystem::path folder;
};

} // namespace support
