// SPDX-License-Identifier: BSL-1.0
#include "foreign_list.hpp"

namespace identity {

ForeignList::ForeignList() : WrappedImportList(lf::import::createImportList(nullptr)) {}

ForeignList::~ForeignList() = default;

std::unique_ptr<lf::import::IImportList> ForeignList::clone() const {
    return std::make_unique<ForeignList>(*this);
}

} // namespace identity
