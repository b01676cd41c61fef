// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Includes the whole host kit.

#include <host/catalogue.hpp>
#include <host/command.hpp>
#include <host/identity.hpp>
#include <host/overloaded.hpp>
#include <host/scope.hpp>
#include <host/spelling.hpp>
#include <host/text.hpp>
