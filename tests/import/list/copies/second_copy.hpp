// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The interface of a shared library that contains its own copy of gleigem.

#include <import/export.hpp>
#include <import/import_list.hpp>

#include <memory>

namespace second_copy {

/// createImportList of that copy.
GLEIGEM_EXPORT std::unique_ptr<lf::import::IImportList>
createImportList(std::shared_ptr<lf::import::IImportList const> parent);

} // namespace second_copy
