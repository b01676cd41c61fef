// SPDX-License-Identifier: BSL-1.0
#include <host_testing/matchers.hpp>
#include <host_testing/recording/recorder.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace lf::import;
using namespace lf::import::host_testing;
using recording::recorder;

TEST(AnAdoptersTest, DecidesWhatThePlatformAnswers) {
    recorder().isReserved = [](std::u16string_view word) { return word == u"circle"; };
    std::vector<std::u16string> const command{u"shapes.circle"};
    auto const parser = createImportArgumentParser(command, Behavior::WithPackageImports);
    EXPECT_THAT(parser->parse(), testing::ElementsAre(IsRefusedWith("KeywordInImportArgument",
                                                                    {"shapes.circle", "circle"})));
    EXPECT_THAT(recorder().log, testing::Contains(recording::reservedWord(u"circle", 8)));
}

} // namespace
