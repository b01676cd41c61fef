// SPDX-License-Identifier: BSL-1.0

#include <import_explorer/file_replacement.hpp>

#include "running.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace explorer {
namespace {

namespace fs = std::filesystem;

std::string read(fs::path const& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class FileReplacement : public testing::Test {
  protected:
    FileReplacement() { folder.write("some.import", "before"); }

    fs::path path(char const* name = "some.import") const { return folder.path() / name; }

    static std::optional<std::string> replace(fs::path const& file) {
        return replaceFile(file.native(), "before", "after");
    }

    /// Expects the replacement to be refused and to leave no temporary file.
    void expectRefusal(fs::path const& file, std::string const& words) const {
        std::size_t const files = countFiles();
        EXPECT_EQ(replace(file), words);
        EXPECT_EQ(countFiles(), files);
    }

    std::size_t countFiles() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()));
    }

    support::TemporaryFolder folder;
};

TEST_F(FileReplacement, KeepsTheModeAndLeavesNothingElse) {
    for (fs::perms const mode : {fs::perms(0644), fs::perms(0600), fs::perms(04755)}) {
        folder.write("some.import", "before");
        fs::permissions(path(), mode);
        EXPECT_EQ(replace(path()), std::nullopt);
        EXPECT_EQ(read(path()), "after");
        EXPECT_EQ(fs::status(path()).permissions(), mode);
        EXPECT_EQ(countFiles(), 1U);
    }
}

TEST_F(FileReplacement, LeavesALinkALink) {
    fs::create_directory(path("below"));
    fs::create_symlink("../some.import", path("below/link.import"));
    EXPECT_EQ(replace(path("below/link.import")), std::nullopt);
    EXPECT_TRUE(fs::is_symlink(path("below/link.import")));
    EXPECT_EQ(read(path()), "after");
}

TEST_F(FileReplacement, RefusesAFileThatHasChanged) {
    for (char const* const contents : {"before!", "befor", "", "Before", "\xFF"}) {
        folder.write("some.import", contents);
        expectRefusal(path(), "it has changed meanwhile");
        EXPECT_EQ(read(path()), contents);
    }
}

TEST_F(FileReplacement, RefusesAFileWithAnotherName) {
    fs::create_hard_link(path(), path("other.import"));
    expectRefusal(path(), "it has other hard links");
    EXPECT_EQ(read(path()), "before");
}

TEST_F(FileReplacement, RefusesAReadOnlyFileEvenOfTheSuperuser) {
    fs::permissions(path(), fs::perms(0444));
    expectRefusal(path(), "it is read-only");
}

TEST_F(FileReplacement, RefusesWhatIsNoFile) {
    fs::create_directory(path("folder"));
    expectRefusal(path("folder"), "not a regular file");
    expectRefusal("/dev/null", "not a regular file");
    expectRefusal(path("nothing"), "cannot find it: No such file or directory");
}

TEST_F(FileReplacement, RefusesAFileInAFolderThatTakesNone) {
    if (::geteuid() == 0) {
        // File modes do not restrict the superuser, but no files can be created in /proc.
        EXPECT_THAT(replaceFile("/proc/self/comm", "", "x").value_or(""),
                    testing::StartsWith("cannot create a file beside it: "));
        return;
    }
    fs::permissions(folder.path(), fs::perms(0500));
    EXPECT_EQ(replace(path()), "cannot create a file beside it: Permission denied");
    fs::permissions(folder.path(), fs::perms(0700));
}

} // namespace
} // namespace explorer
