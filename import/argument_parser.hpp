// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The parser that turns the arguments of one `import` command into entries, and its two factories.

#include <import/entries.hpp>
#include <import/export.hpp>
#include <import/platform.hpp>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace lf::import {

/// Whether a command may import packages. Any other value means WithPackageImports.
enum class Behavior : std::int32_t {
    /// Every argument must contain a dot; some faults are only warnings.
    WithoutPackageImports = 0,
    /// An argument without a dot names a package.
    WithPackageImports = 1,
    /// The host's feature switch decides when the parser is created.
    FollowFeatureSwitch = 2,
};

/// Zero-based position among the arguments of a command, every argument counted.
using ImportArgumentIndex = std::uint64_t;

/// One element of the result: an entry and the argument that it belongs to. The order of the
/// alternatives is fixed.
using ParsedImportEntry = std::variant<std::pair<FullyQualifiedImportEntry, ImportArgumentIndex>,
                                       std::pair<WildcardImportEntry, ImportArgumentIndex>,
                                       std::pair<PackageImportEntry, ImportArgumentIndex>,
                                       std::pair<InvalidImportEntry, ImportArgumentIndex>>;

/// Parses one `import` command. Use it once, in one thread.
class GLEIGEM_EXPORT IImportArgumentParser {
  public:
    IImportArgumentParser() = default;
    IImportArgumentParser(IImportArgumentParser const&) = default;
    IImportArgumentParser& operator=(IImportArgumentParser const&) = default;
    virtual ~IImportArgumentParser();

    /// The entries of the command, in the order of its arguments.
    ///
    /// All or nothing: a command with an error yields exactly one InvalidImportEntry. A warning
    /// directly follows the entry that it is about; only the warning about the argument `.*`
    /// without package imports stands alone, like an error.
    ///
    /// \pre Call this once. Debug builds assert it if the first call yielded anything.
    ///
    /// \returns a list that the parser owns; you may move entries out of it.
    /// \throws std::bad_alloc, and what the package descriptor library throws for a plain package
    ///         name that it refuses. Other invalid input never throws.
    virtual std::vector<ParsedImportEntry>& parse() = 0;
};

/// Creates a parser for the arguments of one command, as texts in command order. The texts are only
/// read during this call.
///
/// \throws std::bad_alloc, and what the host's services throw.
GLEIGEM_EXPORT std::unique_ptr<IImportArgumentParser>
createImportArgumentParser(cppcompat::span<const std::u16string> arguments, Behavior behavior);

/// Creates a parser for the arguments of a command in the host's syntax tree, which is only read
/// during this call.
///
/// The tree is asked for the number of arguments, to reserve memory; then, for each argument, for
/// the number again, the argument's node and the node's text. If the tree reports more arguments
/// than fit into memory, they are read until memory runs out.
///
/// \pre \p command has a tree, which a default-constructed view lacks. Debug builds assert it.
/// \throws std::bad_alloc, and what the tree and the host's services throw.
GLEIGEM_EXPORT std::unique_ptr<IImportArgumentParser>
createImportArgumentParser(lf::astapi::ImportCommandView command, Behavior behavior);

} // namespace lf::import
