// SPDX-License-Identifier: BSL-1.0
#include <host_testing/contract.hpp>

#include <host_testing/recording/recorder.hpp>
#include <support/row_name.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace lf::import::host_testing {
namespace {

using recording::Recorder;
using recording::recorder;
using testing::IsEmpty;

std::vector<CheckedPromise> check() {
    return checkContract(u"pkg", u"pkg@1.2");
}

std::vector<std::string> unkept() {
    std::vector<std::string> lines;
    for (CheckedPromise const& promise : check()) {
        if (!promise.isKept()) {
            std::ostringstream line;
            line << promise;
            lines.push_back(line.str());
        }
    }
    return lines;
}

struct FaultRow {
    std::function<void(Recorder&)> fault;
    std::vector<std::string> lines;
    std::string why;

    friend void PrintTo(FaultRow const& row, std::ostream* stream) { *stream << row.why; }
};

class CheckContract : public testing::TestWithParam<FaultRow> {
  protected:
    void SetUp() override { recorder() = Recorder(); }

    void TearDown() override { recorder() = Recorder(); }
};

TEST_P(CheckContract, FindsTheFault) {
    GetParam().fault(recorder());
    EXPECT_EQ(unkept(), GetParam().lines);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(EveryRow, CheckContract, testing::ValuesIn(std::vector<FaultRow>{
    {[](Recorder&) {}, {}, "a platform as it should be"},
    {[](Recorder& platform) { platform.isIdentifier = [](auto) { return true; }; },
     {"BROKEN  the empty text is no identifier", "BROKEN  a star is no identifier"},
     "everything is an identifier"},
    {[](Recorder& platform) { platform.isIdentifier = [](auto) { return false; }; },
     {"BROKEN  the name of a package is an identifier"},
     "nothing is an identifier"},
    {[](Recorder& platform) { platform.isReserved = [](auto) { return true; }; },
     {"BROKEN  and not reserved"},
     "the name of the package is reserved"},
    {[](Recorder& platform) { platform.packageName = [](std::u16string const& name) { return name + u"x"; }; },
     {"BROKEN  a package without versions introduces the name by which it is imported", "BROKEN  and is written like that",
      "BROKEN  a specifier reads back from what it writes"},
     "a package has another name"},
    {[](Recorder& platform) { platform.isSpecifier = [](auto) { return true; }; },
     {"BROKEN  '@' is refused by the exception for that", "BROKEN  which is a std::exception", "BROKEN  and which the library catches"},
     "nothing is refused"},
    {[](Recorder& platform) { platform.isSpecifier = [](std::u16string_view text) -> bool {
         if (text == u"@") { throw std::runtime_error("no"); }
         return true;
     }; },
     {"THROWS  '@' is refused by the exception for that", "THROWS  and which the library catches"},
     "the refusal is another exception"},
    {[](Recorder& platform) { platform.isIdentifier = [](auto) -> bool { throw 1; }; },
     {"THROWS  the empty text is no identifier", "THROWS  a star is no identifier", "THROWS  the name of a package is an identifier"},
     "a service throws"},
}), support::RowName{});

// clang-format on

TEST(TheContract, HasAPromiseForEachService) {
    recorder() = Recorder();
    EXPECT_THAT(check(), testing::SizeIs(testing::Ge(18U)));
    EXPECT_THAT(unkept(), IsEmpty());
}

} // namespace
} // namespace lf::import::host_testing
