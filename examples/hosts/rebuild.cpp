// SPDX-License-Identifier: BSL-1.0

/// \file
/// The work of an editor after each keystroke: creates all import lists of a file again, once
/// parsing every command and once with cached entries.

#include <host/host.hpp>
#include <import/import.hpp>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace lf::import;

constexpr std::size_t numberOfFunctions = 400;
constexpr std::size_t importsOfTheFile = 40;
constexpr std::size_t importsOfAFunction = 3;
constexpr int rounds = 20;

using Arguments = std::vector<std::u16string>;

/// The commands of one scope.
using Commands = std::vector<Arguments>;

/// `library3.part.member53`
std::u16string makeName(std::size_t number) {
    std::string const name =
        "library" + std::to_string(number % 50) + ".part.member" + std::to_string(number);
    return std::u16string(host::Utf16Text(name).view());
}

/// The file's own commands, then those of each function; one command for each import.
std::vector<Commands> makeFile() {
    std::vector<Commands> scopes(1 + numberOfFunctions);
    std::size_t number = 0;
    for (Commands& commands : scopes) {
        std::size_t const size = &commands == scopes.data() ? importsOfTheFile : importsOfAFunction;
        while (commands.size() < size) {
            commands.push_back({makeName(number++)});
        }
    }
    return scopes;
}

/// The entries of a command.
std::vector<ImportEntry> parse(Arguments const& command) {
    std::vector<ImportEntry> entries;
    for (host::CommandItem& item : host::readCommand(command, Behavior::WithPackageImports)) {
        if (auto* const found = std::get_if<host::CommandEntry>(&item)) {
            entries.push_back(std::move(found->entry));
        }
    }
    return entries;
}

/// Caches the entries of commands.
class Memory {
  public:
    std::vector<ImportEntry> const& entriesOf(Arguments const& command) {
        auto const [position, isNew] = entriesByText.try_emplace(command.front());
        if (isNew) {
            position->second = parse(command);
        }
        return position->second;
    }

  private:
    std::unordered_map<std::u16string, std::vector<ImportEntry>> entriesByText;
};

/// Creates the lists of all scopes of a file, the file's own first.
template <typename Parse>
std::vector<std::shared_ptr<IImportList>> rebuild(std::vector<Commands> const& file,
                                                  Parse const& entriesOf) {
    std::vector<std::shared_ptr<IImportList>> lists;
    lists.reserve(file.size());
    for (Commands const& commands : file) {
        lists.push_back(createImportList(lists.empty() ? nullptr : lists.front()));
        for (Arguments const& command : commands) {
            for (ImportEntry entry : entriesOf(command)) {
                (void)lists.back()->addStaticImportEntry(std::move(entry));
            }
        }
    }
    return lists;
}

/// The minimum time of several rounds, in seconds.
template <typename Work>
double timeOf(Work const& work) {
    using Clock = std::chrono::steady_clock;
    auto shortest = Clock::duration::max();
    for (int round = 0; round < rounds; ++round) {
        auto const start = Clock::now();
        work();
        shortest = std::min(shortest, Clock::now() - start);
    }
    return std::chrono::duration<double>(shortest).count();
}

std::size_t countImports(std::vector<std::shared_ptr<IImportList>> const& lists) {
    std::size_t count = 0;
    for (auto const& list : lists) {
        count += list->getNumberOfEntries(IImportList::CheckAncestorList::No);
    }
    return count;
}

} // namespace

int main() {
    std::vector<Commands> const file = makeFile();
    Memory memory;
    auto const remembered = [&](Arguments const& command) { return memory.entriesOf(command); };

    std::cout << file.size() << " scopes, " << countImports(rebuild(file, parse)) << " imports\n"
              << std::fixed << std::setprecision(6);
    std::cout << "everything anew: " << timeOf([&] { rebuild(file, parse); }) << " s\n";
    std::cout << "with remembered entries: " << timeOf([&] { rebuild(file, remembered); })
              << " s\n";
}
