// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// All of the library's public interface.

#include <import/argument_parser.hpp>
#include <import/arguments.hpp>
#include <import/entries.hpp>
#include <import/import_list.hpp>
#include <import/messages.hpp>
#include <import/rendering.hpp>
#include <import/version.hpp>
