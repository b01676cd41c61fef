// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Runs programs as a user does: by a command line in a shell.

#include <filesystem>
#include <string>
#include <string_view>

namespace support {

/// The result of a run.
struct Outcome {
    int status = -1;
    std::string output;
    std::string errorOutput;
};

/// Runs \p commandLine in \p folder with the shell; `import_explorer` is the program under test.
Outcome runInShell(std::string const& commandLine, std::filesystem::path const& folder);

/// As runInShell, but all three streams are a terminal, so errors are part of the output.
Outcome runOnTerminal(std::string const& commandLine, std::filesystem::path const& folder);

/// Whether this process can create a pseudo-terminal; in some containers it cannot.
bool canMakeTerminals();

/// A folder for one test; removed with its contents on destruction.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder();

    std::filesystem::path const& path() const noexcept { return folder; }

    /// Writes a file and creates its parent folders.
    void write(std::filesystem::path const& name, std::string_view contents) const;

  private:
    std::filesystem::path folder;
};

} // namespace support
