// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// All of the host kit: what every front end writes around the library.

#include <host/catalogue.hpp>
#include <host/command.hpp>
#include <host/identity.hpp>
#include <host/overloaded.hpp>
#include <host/scope.hpp>
#include <host/spelling.hpp>
#include <host/text.hpp>
