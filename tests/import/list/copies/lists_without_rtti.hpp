// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Lists whose class has no type information.

#include <import/export.hpp>
#include <import/import_list.hpp>

#include <memory>

namespace without_rtti {

/// A foreign list that delegates to a list of the library.
GLEIGEM_EXPORT std::unique_ptr<lf::import::IImportList>
createForeignList(std::shared_ptr<lf::import::IImportList const> parent);

} // namespace without_rtti
