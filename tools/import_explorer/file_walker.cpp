// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/file_walker.hpp>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace explorer {

namespace {

namespace fs = std::filesystem;

struct Entry {
    fs::path path;
    bool isFolder = false;
};

bool isHidden(fs::path const& path) {
    return path.filename().native().starts_with('.');
}

/// Appends the files and folders in \p folder that count, the last in the alphabet first.
std::error_code listInReverse(fs::path const& folder, FileFilter filter,
                              std::vector<Entry>& entries) {
    std::error_code error;
    auto const numberBefore = static_cast<std::ptrdiff_t>(entries.size());
    for (fs::directory_iterator position(folder, error), end; !error && position != end;
         position.increment(error)) {
        fs::path const& path = position->path();
        // An entry whose kind cannot be told is taken for a file; opening it tells why.
        std::error_code statusError;
        fs::file_type const type = position->symlink_status(statusError).type();
        bool const isFolder = type == fs::file_type::directory;
        bool const isFile = type == fs::file_type::regular || type == fs::file_type::none;
        bool const isMeant =
            filter == FileFilter::AllFiles || path.native().ends_with(scriptSuffix);
        if (!isHidden(path) && (isFolder || (isFile && isMeant))) {
            entries.push_back({path, isFolder});
        }
    }
    std::sort(entries.begin() + numberBefore, entries.end(),
              [](Entry const& left, Entry const& right) { return right.path < left.path; });
    return error;
}

/// Deep trees must not exhaust the stack, so the folders still to be done are kept here.
void findBelow(fs::path const& root, FileFilter filter, std::vector<FoundFile>& found) {
    std::vector<Entry> pending{{root, true}};
    while (!pending.empty()) {
        Entry const entry = std::move(pending.back());
        pending.pop_back();
        if (!entry.isFolder) {
            found.emplace_back(entry.path.native());
        } else if (std::error_code const error = listInReverse(entry.path, filter, pending)) {
            found.emplace_back(LoadFailure{
                entry.path.native(), "cannot read the folder: " + error.message(), std::nullopt});
        }
    }
}

} // namespace

std::vector<FoundFile> findFiles(std::vector<std::string> const& paths, FileFilter filter) {
    std::vector<FoundFile> found;
    for (std::string const& path : paths) {
        std::error_code error;
        if (path != standardInputPath && fs::is_directory(path, error)) {
            findBelow(path, filter, found);
        } else {
            found.emplace_back(path);
        }
    }
    return found;
}

} // namespace explorer
