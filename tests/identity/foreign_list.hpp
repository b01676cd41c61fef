// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// A foreign list that one library defines and others know.

#include <support/wrapped_import_list.hpp>

#include <import/export.hpp>
#include <import/import_list.hpp>

#include <memory>

namespace identity {

/// Delegates to a list of the library. Its destructor is not inline, so that its type is defined in
/// this library only.
class GLEIGEM_EXPORT ForeignList final : public support::WrappedImportList {
  public:
    ForeignList();
    ForeignList(ForeignList const&) = default;
    ForeignList& operator=(ForeignList const&) = delete;
    ~ForeignList() override;

    std::unique_ptr<IImportList> clone() const override;
};

} // namespace identity
