// SPDX-License-Identifier: BSL-1.0

/// \file
/// Many threads read unmodified lists, and each uses its own parsers. The thread sanitizer then
/// shows that readers share no data that they modify.

#include <support/make_entries.hpp>

#include <import/import.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <latch>
#include <memory>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace lf::import {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;
using enum IImportList::CheckAncestorList;

constexpr int numberOfThreads = 8;
constexpr int numberOfRounds = 20;
constexpr int depth = 128;

/// Expects \p read to return the same in many threads, every time, as in a single thread.
template <typename Read>
void expectTheSameInManyThreads(Read const& read) {
    std::latch start(numberOfThreads);
    std::array<decltype(read()), numberOfThreads> answers;
    std::vector<std::thread> threads;
    threads.reserve(numberOfThreads);
    for (auto& answer : answers) {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            answer = read();
            for (int round = 1; round < numberOfRounds; ++round) {
                if (read() != answer) {
                    answer.emplace_back("another answer in another round");
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    // Called last, so that anything created on first use is created by the threads.
    auto const expected = read();
    for (auto const& answer : answers) {
        EXPECT_EQ(answer, expected);
    }
}

template <typename Char>
std::basic_string<Char> printed(auto const& entry) {
    std::basic_stringbuf<Char> buffer;
    std::basic_ostream<Char> stream(&buffer);
    stream << entry;
    return buffer.str();
}

std::u16string numbered(std::u16string const& text, int number) {
    std::string const digits = std::to_string(number);
    return text + std::u16string(digits.begin(), digits.end());
}

/// Nested lists; each imports something of each kind, and most of it is visible from inside.
std::shared_ptr<IImportList const> makeDeepChain() {
    std::shared_ptr<IImportList> list = createImportList(nullptr);
    for (int level = 0; level < depth; ++level) {
        list = createImportList(std::move(list));
        list->addStaticImportEntry(makeName(numbered(u"root.name", level)));
        list->addStaticImportEntry(makeWildcard(numbered(u"root.w", level) + u".*"));
        list->addStaticImportEntry(makePackage(numbered(u"p", level) + u"@^1.2", u"hidden"));
        list->addStaticImportEntry(makePackage(numbered(u"package", level)));
    }
    return list;
}

using Answers = std::vector<std::string>;

void appendEntries(IImportList const& list, Answers& answers) {
    for (auto const& entry : list.getFullyQualifiedImportEntries(Yes)) {
        answers.push_back(printed<char>(entry));
    }
    for (auto const& entry : list.getWildcardImportEntries(Yes)) {
        answers.push_back(printed<char>(entry));
    }
    for (auto const& entry : list.getPackageImportEntries(Yes)) {
        answers.push_back(printed<char>(entry));
        answers.push_back(fl::i18n::ustring_to_utf8(printed<char16_t>(entry)));
    }
}

void appendFound(IImportList const& list, Answers& answers) {
    for (int level = 0; level < depth; ++level) {
        auto const package = list.findPackageImportEntry(numbered(u"package", level), Yes);
        answers.push_back(package ? printed<char>(package->entry) : "none");
        auto const name = list.findFullyQualifiedImportEntry(numbered(u"name", level), Yes);
        answers.push_back(name ? fl::i18n::ustring_to_utf8(name->rawArgument) : "none");
    }
    answers.emplace_back(list.findPackageImportEntry(u"missing", Yes) ? "found" : "missing");
}

/// The answers of a list to all questions.
Answers answersOf(IImportList const& list) {
    Answers answers{std::to_string(list.getNumberOfEntries(Yes)),
                    list.isEmpty(Yes) ? "empty" : "not empty"};
    appendEntries(list, answers);
    appendFound(list, answers);
    return answers;
}

TEST(ADeepChain, MayBeReadByManyThreadsAtOnce) {
    std::shared_ptr<IImportList const> const list = makeDeepChain();
    EXPECT_EQ(list->getNumberOfEntries(Yes), 4U * depth);
    expectTheSameInManyThreads([&] { return answersOf(*list); });
}

TEST(ADeepChain, MayBeClonedAndNestedInByManyThreadsAtOnce) {
    std::shared_ptr<IImportList const> const list = makeDeepChain();
    expectTheSameInManyThreads([&] {
        auto const inner = createImportList(list->clone());
        inner->addStaticImportEntry(makeName(u"innermost.name1"));
        Answers answers = answersOf(*inner);
        answers.emplace_back(createImportList(list)->getParent() == list ? "parent" : "none");
        return answers;
    });
}

TEST(Parsers, MayBeUsedInManyThreadsEachItsOwn) {
    std::vector<std::u16string> const command{u"p\u00E4ckage@^1.2,<3", u"as", u"\u00FCname"};
    expectTheSameInManyThreads([&] {
        Answers answers;
        for (auto const behavior : {Behavior::WithPackageImports, Behavior::WithoutPackageImports,
                                    Behavior::FollowFeatureSwitch}) {
            auto const parser = createImportArgumentParser(command, behavior);
            for (ParsedImportEntry const& parsed : parser->parse()) {
                auto const* const package =
                    std::get_if<std::pair<PackageImportEntry, ImportArgumentIndex>>(&parsed);
                answers.push_back(package != nullptr ? printed<char>(package->first) : "another");
            }
        }
        return answers;
    });
}

} // namespace
} // namespace lf::import
