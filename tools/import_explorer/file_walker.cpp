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

enum class KindOfEntry {
    Folder,
    File,
    /// Matches the filter but is not a regular file, or its kind is unknown.
    Unreadable,
};

struct Entry {
    fs::path path;
    KindOfEntry kind = KindOfEntry::File;
    /// Why it is unreadable.
    std::string reason;
};

bool isHidden(fs::path const& path) {
    return path.filename().native().starts_with('.');
}

/// Returns nothing for what is ignored. Uses the kind stored in the folder entry, which is usually
/// known even if the file itself cannot be accessed.
std::optional<Entry> classify(fs::directory_entry const& found, FileFilter filter) {
    fs::path const& path = found.path();
    if (isHidden(path)) {
        return std::nullopt;
    }
    bool const isMeant = filter == FileFilter::AllFiles || path.native().ends_with(scriptSuffix);
    std::error_code error;
    bool const isLink = found.is_symlink(error);
    bool const isFolder = !error && found.is_directory(error);
    if (isLink && (isFolder || isMeant)) {
        return Entry{path, KindOfEntry::Unreadable,
                     "a symbolic link in a folder is not followed: name it to read it"};
    }
    if (isFolder) {
        return Entry{path, KindOfEntry::Folder, {}};
    }
    bool const isFile = !error && found.is_regular_file(error);
    if (error && !isLink) {
        return Entry{path, KindOfEntry::Unreadable, "cannot tell what it is: " + error.message()};
    }
    if (!isMeant) {
        return std::nullopt;
    }
    return isFile ? Entry{path, KindOfEntry::File, {}}
                  : Entry{path, KindOfEntry::Unreadable, "not a file"};
}

/// Appends the relevant entries of \p folder in reverse alphabetical order.
std::error_code listInReverse(fs::path const& folder, FileFilter filter,
                              std::vector<Entry>& entries) {
    std::error_code error;
    auto const numberBefore = static_cast<std::ptrdiff_t>(entries.size());
    for (fs::directory_iterator position(folder, error), end; !error && position != end;
         position.increment(error)) {
        if (std::optional<Entry> entry = classify(*position, filter)) {
            entries.push_back(std::move(*entry));
        }
    }
    std::sort(entries.begin() + numberBefore, entries.end(),
              [](Entry const& left, Entry const& right) { return right.path < left.path; });
    return error;
}

/// Keeps pending folders in a vector, so that deep trees cannot exhaust the stack.
void findBelow(fs::path const& root, FileFilter filter, std::vector<FoundFile>& found) {
    std::vector<Entry> pending{{root, KindOfEntry::Folder, {}}};
    while (!pending.empty()) {
        Entry const entry = std::move(pending.back());
        pending.pop_back();
        switch (entry.kind) {
        case KindOfEntry::File:
            found.emplace_back(entry.path.native());
            break;
        case KindOfEntry::Unreadable:
            found.emplace_back(LoadFailure{entry.path.native(), entry.reason, std::nullopt});
            break;
        case KindOfEntry::Folder:
            if (std::error_code const error = listInReverse(entry.path, filter, pending)) {
                found.emplace_back(LoadFailure{entry.path.native(),
                                               "cannot read the folder: " + error.message(),
                                               std::nullopt});
            }
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
