// SPDX-License-Identifier: BSL-1.0
#include "running.hpp"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace support {

namespace {

namespace fs = std::filesystem;

std::string readFile(fs::path const& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string inFolder(std::string const& commandLine, fs::path const& folder) {
    return "cd '" + folder.string() + "' && PATH='" IMPORT_EXPLORER_FOLDER "':$PATH && " +
           commandLine;
}

int exitStatus(int waitStatus) {
    return WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : -1;
}

std::string readUntilClosed(int terminal) {
    std::string text;
    std::array<char, 4096> chunk{};
    while (true) {
        ssize_t const size = ::read(terminal, chunk.data(), chunk.size());
        if (size > 0) {
            text.append(chunk.data(), static_cast<std::size_t>(size));
        } else if (size == 0 || errno != EINTR) {
            // Reading fails once the program has closed the terminal.
            return text;
        }
    }
}

} // namespace

Outcome runInShell(std::string const& commandLine, fs::path const& folder) {
    TemporaryFolder const results;
    std::string const redirected = "{ " + inFolder(commandLine, folder) + "\n} >'" +
                                   (results.path() / "output").string() + "' 2>'" +
                                   (results.path() / "errors").string() + "' </dev/null";
    int const status = std::system(redirected.c_str());
    return {exitStatus(status), readFile(results.path() / "output"),
            readFile(results.path() / "errors")};
}

Outcome runOnTerminal(std::string const& commandLine, fs::path const& folder) {
    std::string const line = inFolder(commandLine, folder);
    int terminal = -1;
    pid_t const child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child < 0) {
        throw std::system_error(errno, std::generic_category());
    }
    if (child == 0) {
        ::execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
        ::_exit(127);
    }
    Outcome outcome;
    outcome.output = readUntilClosed(terminal);
    int status = 0;
    ::waitpid(child, &status, 0);
    ::close(terminal);
    outcome.status = exitStatus(status);
    return outcome;
}

bool canMakeTerminals() {
    int terminal = -1;
    int program = -1;
    if (::openpty(&terminal, &program, nullptr, nullptr, nullptr) != 0) {
        return false;
    }
    ::close(terminal);
    ::close(program);
    return true;
}

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "import_explorer.XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category());
    }
    folder = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

void TemporaryFolder::write(fs::path const& name, std::string_view contents) const {
    fs::create_directories((folder / name).parent_path());
    std::ofstream stream(folder / name, std::ios::binary);
    stream << contents;
    if (!stream.flush()) {
        throw std::runtime_error("cannot write " + name.string());
    }
}

} // namespace support
