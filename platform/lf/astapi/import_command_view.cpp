// SPDX-License-Identifier: BSL-1.0
#include <lf/astapi/import_command_view.hpp>

namespace lf::astapi {

ISyntaxTree::~ISyntaxTree() = default;

} // namespace lf::astapi
