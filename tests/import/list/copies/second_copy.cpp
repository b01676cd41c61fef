// SPDX-License-Identifier: BSL-1.0
#include "second_copy.hpp"

#include <utility>

namespace second_copy {

std::unique_ptr<lf::import::IImportList>
createImportList(std::shared_ptr<lf::import::IImportList const> parent) {
    return lf::import::createImportList(std::move(parent));
}

} // namespace second_copy
