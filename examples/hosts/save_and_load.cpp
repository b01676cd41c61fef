// SPDX-License-Identifier: BSL-1.0

/// \file
/// An incremental build: stores the lists of a file as text, loads them in the next run, and checks
/// only what has changed according to the fingerprints.

#include "saved_lists.hpp"

#include <host/host.hpp>
#include <import/import.hpp>

#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace lf::import;

constexpr auto yes = IImportList::CheckAncestorList::Yes;

void importInto(IImportList& list, std::u16string const& argument) {
    for (host::CommandItem& item :
         host::readCommand(std::vector{argument}, Behavior::WithPackageImports)) {
        if (auto* const found = std::get_if<host::CommandEntry>(&item)) {
            (void)list.addStaticImportEntry(std::move(found->entry));
        }
    }
}

/// A file and a function in it.
struct File {
    std::shared_ptr<IImportList> outer = createImportList(nullptr);
    std::shared_ptr<IImportList> inner = createImportList(outer);
};

void compare(std::string const& what, File const& before, File const& now) {
    bool const isSame =
        host::fingerprintOf(*before.inner, yes) == host::fingerprintOf(*now.inner, yes);
    std::cout << what << ": " << (isSame ? "nothing to check" : "check the function again") << '\n';
}

} // namespace

int main() {
    File file;
    importInto(*file.inner, u"matrix.solve");
    importInto(*file.inner, u"shapes.*");
    importInto(*file.outer, u"matrix@^2.1");

    saved_lists::Lines const outer = saved_lists::save(*file.outer);
    saved_lists::Lines const inner = saved_lists::save(*file.inner);
    for (saved_lists::Lines const& lines : {outer, inner}) {
        for (std::string const& line : lines) {
            std::cout << line << '\n';
        }
    }

    File loaded;
    saved_lists::load(inner, *loaded.inner);
    saved_lists::load(outer, *loaded.outer);
    compare("after loading", file, loaded);
    importInto(*loaded.outer, u"colours.red");
    compare("after an import in the file", file, loaded);
}
