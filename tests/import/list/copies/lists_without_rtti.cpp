// SPDX-License-Identifier: BSL-1.0
#include "lists_without_rtti.hpp"

#include <support/wrapped_import_list.hpp>

#include <utility>

#if defined(__cpp_rtti)
#error "this file must be compiled without RTTI"
#endif

namespace without_rtti {

namespace {

using lf::import::IImportList;

class List final : public support::WrappedImportList {
  public:
    explicit List(std::unique_ptr<IImportList> list) : WrappedImportList(std::move(list)) {}

    std::unique_ptr<IImportList> clone() const override { return std::make_unique<List>(*this); }
};

} // namespace

std::unique_ptr<IImportList> createForeignList(std::shared_ptr<IImportList const> parent) {
    return std::make_unique<List>(lf::import::createImportList(std::move(parent)));
}

} // namespace without_rtti
