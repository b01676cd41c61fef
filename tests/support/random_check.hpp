// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Runs properties as part of a test. RC_PARAMS can set the number of cases and the seed, as in
/// RC_PARAMS="max_success=1000000 seed=42"; the message of a failure contains the seed.

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <sstream>

namespace support {

/// Checks \p property on \p numberOfCases random cases, unless RC_PARAMS overrides the number.
template <typename Property>
void checkOnRandomCases(int numberOfCases, Property const& property) {
    rc::detail::TestParams parameters = rc::detail::configuration().testParams;
    if (parameters.maxSuccess == rc::detail::TestParams().maxSuccess) {
        parameters.maxSuccess = numberOfCases;
    }
    rc::detail::TestResult const result =
        rc::detail::checkTestable(property, rc::detail::TestMetadata(), parameters);
    if (!result.is<rc::detail::SuccessResult>()) {
        std::ostringstream text;
        rc::detail::printResultMessage(result, text);
        ADD_FAILURE() << text.str() << "\nwith RC_PARAMS=\"seed=" << parameters.seed
                      << " max_success=" << parameters.maxSuccess << "\"";
    }
}

} // namespace support
