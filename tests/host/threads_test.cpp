// SPDX-License-Identifier: BSL-1.0

/// \file
/// Many threads read the same scope, to which no imports are added, and nest their own scopes in
/// it. The thread sanitizer detects a reader that writes shared data.

#include <host/host.hpp>

#include <support/make_entries.hpp>

#include <gtest/gtest.h>

#include <array>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace lf::import::host {
namespace {

using support::makeName;
using support::makePackage;
using support::makeWildcard;

constexpr int numberOfThreads = 8;
constexpr int numberOfRounds = 50;

std::shared_ptr<Scope<int> const> makeOuterScope() {
    auto scope = std::make_shared<Scope<int>>();
    (void)scope->addStatic(makePackage(u"net.http@1"), 1);
    (void)scope->addStatic(makeName(u"shapes.circle"), 2);
    (void)scope->addStatic(makeWildcard(u"colours.*"), 3);
    return scope;
}

/// Reads one file, as a front end that reads many at once does.
std::vector<std::string> readFile(std::shared_ptr<Scope<int> const> const& outer) {
    auto const file = std::make_shared<Scope<int>>(outer);
    auto const inner = std::make_shared<Scope<int>>(file);
    (void)inner->addStatic(makeName(u"solids.circle"), 4);
    auto const refused = inner->addStatic(makeWildcard(u"net.http.*"), 5);
    UseRecord<int> uses;
    std::vector<std::string> texts{std::to_string(refused.index())};
    for (char const* const name : {"circle", "net.http.get", "unknown"}) {
        auto const resolution = inner->resolve(name);
        uses.add(resolution);
        for (auto const& imports : {resolution.imports, resolution.wildcards}) {
            for (ScopedImport<int> const& scoped : imports) {
                texts.push_back(toUtf8(scoped.imported->entry));
            }
        }
    }
    texts.push_back(std::to_string(uses.unreached(*outer).size()));
    texts.push_back(std::to_string(inner->hidden().size()));
    texts.push_back(
        std::to_string(fingerprintOf(*inner->getList(), IImportList::CheckAncestorList::Yes)));
    return texts;
}

TEST(ManyThreads, ShareAnOuterScope) {
    std::shared_ptr<Scope<int> const> outer = makeOuterScope();
    std::vector<std::string> const expected = readFile(outer);
    std::array<std::vector<std::string>, numberOfThreads> differences;
    std::vector<std::thread> threads;
    threads.reserve(numberOfThreads);
    std::latch start(numberOfThreads);
    for (std::vector<std::string>& difference : differences) {
        threads.emplace_back([&start, &expected, &difference, share = outer] {
            start.arrive_and_wait();
            for (int round = 0; round < numberOfRounds; ++round) {
                std::vector<std::string> texts = readFile(share);
                if (texts != expected) {
                    difference = std::move(texts);
                }
            }
        });
    }
    // The last thread to finish destroys the scope.
    outer.reset();
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::vector<std::string> const& difference : differences) {
        EXPECT_EQ(difference, std::vector<std::string>());
    }
}

} // namespace
} // namespace lf::import::host
