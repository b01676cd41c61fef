// SPDX-License-Identifier: BSL-1.0

/// \file
/// A compiler that reads many files at once: a list of the imports common to all of them is created
/// before the threads start; each thread nests its own list in it.

#include <import/import.hpp>

#include <array>
#include <cstddef>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace lf::import;

constexpr std::size_t numberOfThreads = 8;
constexpr std::size_t filesOfAThread = 100;

void importInto(IImportList& list, std::vector<std::u16string> const& command) {
    auto const parser = createImportArgumentParser(command, Behavior::WithPackageImports);
    for (ParsedImportEntry& parsed : parser->parse()) {
        auto* const name =
            std::get_if<std::pair<FullyQualifiedImportEntry, ImportArgumentIndex>>(&parsed);
        if (name != nullptr) {
            (void)list.addStaticImportEntry(std::move(name->first));
        }
    }
}

/// The number of names in one file that come from the shared list.
std::size_t readFile(std::shared_ptr<IImportList const> const& shared) {
    constexpr auto yes = IImportList::CheckAncestorList::Yes;
    auto const file = createImportList(shared);
    importInto(*file, {u"local.square"});
    std::size_t found = 0;
    for (std::u16string_view const name : {u"circle", u"square", u"spin", u"missing"}) {
        auto const entry = file->findFullyQualifiedImportEntry(name, yes);
        found += entry && entry->origin == EntryOrigin::Ancestor ? 1 : 0;
    }
    return found;
}

} // namespace

int main() {
    std::shared_ptr<IImportList> const prelude = createImportList(nullptr);
    importInto(*prelude, {u"shapes.circle", u"shapes.square", u"effects.spin"});

    // From here on, nobody adds to the list, so no lock is needed.
    std::shared_ptr<IImportList const> const shared = prelude;
    std::array<std::size_t, numberOfThreads> found{};
    std::vector<std::thread> threads;
    threads.reserve(numberOfThreads);
    for (std::size_t& count : found) {
        threads.emplace_back([&count, shared] {
            for (std::size_t file = 0; file < filesOfAThread; ++file) {
                count += readFile(shared);
            }
        });
    }
    std::size_t total = 0;
    for (std::size_t thread = 0; thread < numberOfThreads; ++thread) {
        threads[thread].join();
        total += found[thread];
    }
    std::cout << numberOfThreads << " threads read " << numberOfThreads * filesOfAThread
              << " files; the shared list supplied " << total << " names\n";
}
