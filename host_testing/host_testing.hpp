// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The part of the test kit that works with any platform: printers and matchers for GoogleTest, and
/// the test of a platform.

#include <host_testing/contract.hpp>
#include <host_testing/describe.hpp>
#include <host_testing/matchers.hpp>
#include <host_testing/printers.hpp>
#include <host_testing/quoted.hpp>
