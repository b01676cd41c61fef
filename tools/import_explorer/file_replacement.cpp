// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/file_replacement.hpp>

#include <import_explorer/source_file.hpp>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>
#include <variant>

namespace explorer {

namespace {

namespace fs = std::filesystem;

/// Why a file was not replaced.
struct Obstacle {
    std::string words;
};

[[noreturn]] void fail(std::string words) {
    throw Obstacle{std::move(words)};
}

[[noreturn]] void failAt(std::string const& step, std::error_code const& error) {
    fail(step + ": " + error.message());
}

/// Throws if a system call failed.
void require(bool hasSucceeded, std::string const& step) {
    if (!hasSucceeded) {
        failAt(step, {errno, std::generic_category()});
    }
}

/// A temporary file in the same folder, which replaces the target or is removed.
class FileBeside {
  public:
    explicit FileBeside(fs::path const& target)
        : path((target.parent_path() / ".import_explorer.XXXXXX").native()),
          descriptor(::mkstemp(path.data())) {
        require(descriptor >= 0, "cannot create a file beside it");
    }

    FileBeside(FileBeside const&) = delete;
    FileBeside& operator=(FileBeside const&) = delete;

    ~FileBeside() {
        ::close(descriptor);
        if (!isMoved) {
            ::unlink(path.c_str());
        }
    }

    void write(std::string_view contents) const {
        while (!contents.empty()) {
            ssize_t const written = ::write(descriptor, contents.data(), contents.size());
            require(written >= 0 || errno == EINTR, "cannot write a file beside it");
            contents.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
        }
    }

    /// Sets the mode last: changing the owner may clear bits of it.
    void becomeLike(struct stat const& status) const {
        require(::fchown(descriptor, status.st_uid, status.st_gid) == 0, "cannot keep its owner");
        require(::fchmod(descriptor, status.st_mode & allBits) == 0, "cannot keep its mode");
    }

    void moveTo(fs::path const& target) {
        require(::fsync(descriptor) == 0, "cannot write a file beside it");
        require(::rename(path.c_str(), target.c_str()) == 0, "cannot replace it");
        isMoved = true;
    }

  private:
    static constexpr mode_t allBits = 07777;

    std::string path;
    int descriptor;
    bool isMoved = false;
};

struct stat statusOf(fs::path const& path) {
    struct stat status {};

    require(::stat(path.c_str(), &status) == 0, "cannot tell what it is");
    return status;
}

void requireReplaceable(fs::path const& path, struct stat const& status) {
    constexpr mode_t writable = 0222;
    if (!S_ISREG(status.st_mode)) {
        fail("not a regular file");
    }
    if (status.st_nlink > 1) {
        fail("it has other hard links");
    }
    // access() always succeeds for the superuser.
    if ((status.st_mode & writable) == 0) {
        fail("it is read-only");
    }
    require(::access(path.c_str(), W_OK) == 0, "cannot write it");
}

bool hasContents(std::string const& path, std::string_view expected) {
    auto const loaded = loadSourceFile(path);
    auto const* const file = std::get_if<SourceFile>(&loaded);
    return file != nullptr && file->text() == expected;
}

} // namespace

std::optional<std::string> replaceFile(std::string const& path, std::string_view expected,
                                       std::string_view contents) {
    try {
        std::error_code error;
        fs::path const target = fs::canonical(path, error);
        if (error) {
            failAt("cannot find it", error);
        }
        struct stat const status = statusOf(target);
        requireReplaceable(target, status);
        FileBeside replacement(target);
        replacement.write(contents);
        replacement.becomeLike(status);
        if (!hasContents(target.native(), expected)) {
            fail("it has changed meanwhile");
        }
        replacement.moveTo(target);
        return std::nullopt;
    } catch (Obstacle const& obstacle) {
        return obstacle.words;
    }
}

} // namespace explorer
