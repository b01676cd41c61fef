// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Names table-driven tests after the reason in each row.

#include <gtest/gtest.h>

#include <cctype>
#include <string>

namespace support {

/// `7_ABadPrefixIsCheckedBeforeTheWildcard` for row 7 with that reason.
struct RowName {
    template <typename Row>
    std::string operator()(testing::TestParamInfo<Row> const& info) const {
        std::string name = std::to_string(info.index) + "_";
        bool startsWord = true;
        for (char const letter : info.param.why) {
            auto const byte = static_cast<unsigned char>(letter);
            if (std::isalnum(byte) != 0) {
                name += static_cast<char>(startsWord ? std::toupper(byte) : byte);
            }
            startsWord = std::isalnum(byte) == 0 && letter != '\'';
        }
        return name;
    }
};

} // namespace support
