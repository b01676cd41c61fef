// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The one place that includes the headers of the host platform's own libraries.

#include <cppcompat/span.hpp>
#include <fl/i18n/ustring_conversions.hpp>
#include <foundation/core/except/exception.hpp>
#include <kpm/arguments/invalid_package_specifier.hpp>
#include <lf/astapi/import_command_view.hpp>
#include <lf/features/package_imports.hpp>
#include <lf/util/identifier.hpp>
#include <lfu/reserved_words.hpp>
#include <oxtavel/keldar_components/component_version_range.hpp>
#include <oxtavel/keldar_components/package_specifier.hpp>
#include <resource_core/message_id.hpp>
