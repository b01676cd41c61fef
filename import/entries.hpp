// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The entries that represent imports: three valid kinds, and one that carries a diagnostic
/// instead.
///
/// Entries own their texts. The views that accessors return are valid while the entry is alive and
/// unchanged; a moved-from entry has empty texts or an empty holder. Copying may throw
/// std::bad_alloc; moving never throws.

#include <import/arguments.hpp>
#include <import/export.hpp>
#include <import/platform.hpp>

#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace lf::import {

class ImportArgumentParser;

static_assert(std::is_nothrow_move_constructible_v<Oxtavel::KeldarComponents::PackageSpecifier>,
              "the host's PackageSpecifier must be movable without an exception: entries are, and "
              "a move that throws would end the program");

/// A package import: which package, in which versions, under which name.
class GLEIGEM_EXPORT PackageImportEntry {
  public:
    /// The package under its own name, any version. Leaves \p argument unchanged.
    ///
    /// \throws foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
    ///         std::exception> when the package descriptor library refuses the name.
    explicit PackageImportEntry(PackageNameImportArgument&& argument);

    /// The package under its own name, in the versions of the specifier, which is moved in.
    explicit PackageImportEntry(VersionedPackageImportArgument&& argument);

    /// The alias form: the package of \p entry under the name \p alias, which is not checked.
    /// \p entry keeps its introduced name.
    PackageImportEntry(PackageImportEntry&& entry, PackageNameImportArgument&& alias) noexcept;

    /// The package with its version range.
    Oxtavel::KeldarComponents::PackageSpecifier const& getPackageSpecifier() const noexcept {
        return packageSpecifier;
    }

    /// The name that the import makes visible: the alias if there is one, else the package's own.
    std::u16string_view getIntroducedName() const noexcept { return introducedName; }

  private:
    friend class ImportArgumentParser;

    GLEIGEM_NO_EXPORT PackageImportEntry(Oxtavel::KeldarComponents::PackageSpecifier&& specifier,
                                         std::u16string&& name) noexcept;

    Oxtavel::KeldarComponents::PackageSpecifier packageSpecifier;
    std::u16string introducedName;
};

/// The import of one item by its dotted name: `a.b.c`.
class GLEIGEM_EXPORT FullyQualifiedImportEntry {
  public:
    /// Takes the three texts of \p argument and leaves its warning there.
    explicit FullyQualifiedImportEntry(FullyQualifiedImportArgument&& argument) noexcept;

    /// The last element of the dotted name: `c`.
    std::u16string_view getIntroducedName() const noexcept { return introducedName; }

    /// The argument as written: `a.b.c`.
    std::u16string_view getRawArgument() const noexcept { return rawArgument; }

    /// The first element of the dotted name: `a`.
    std::u16string_view getRootElement() const noexcept { return rootElement; }

  private:
    GLEIGEM_NO_EXPORT FullyQualifiedImportEntry(std::u16string&& name, std::u16string&& raw,
                                                std::u16string&& root) noexcept;

    std::u16string introducedName;
    std::u16string rawArgument;
    std::u16string rootElement;
};

/// The import of everything below a prefix: `a.b.*`. It introduces no single name.
class GLEIGEM_EXPORT WildcardImportEntry {
  public:
    /// Takes the two texts of \p argument and leaves its warning there.
    explicit WildcardImportEntry(WildcardImportArgument&& argument) noexcept;

    /// The argument as written, ending in `.*`.
    std::u16string_view getRawArgument() const noexcept { return rawArgument; }

    /// The first element of the dotted name: `a`.
    std::u16string_view getRootElement() const noexcept { return rootElement; }

  private:
    GLEIGEM_NO_EXPORT WildcardImportEntry(std::u16string&& raw, std::u16string&& root) noexcept;

    std::u16string rawArgument;
    std::u16string rootElement;
};

/// A diagnostic that replaces or accompanies an import.
class GLEIGEM_EXPORT InvalidImportEntry {
  public:
    /// Takes the message of \p argument, whose holder is left empty.
    explicit InvalidImportEntry(InvalidImportArgument&& argument) noexcept;

    /// Keeps a copy of \p message.
    explicit InvalidImportEntry(resource_core::BaseMsgID const& message);

    /// The holder of the message, empty in a moved-from entry.
    resource_core::GenericMsgIDHolder const& getMsgHolder() const noexcept { return msgHolder; }

    /// Whether the message is a warning, which its key decides (severityOf in messages.hpp).
    ///
    /// \throws resource_core::GenericMsgIDHolder::EmptyGenericMsgIDHolder in a moved-from entry.
    bool isWarning() const;

    /// Whether the message has exactly this key, in any catalogue.
    ///
    /// \throws resource_core::GenericMsgIDHolder::EmptyGenericMsgIDHolder in a moved-from entry.
    bool holdsMsgWithKey(std::string_view key) const;

  private:
    resource_core::GenericMsgIDHolder msgHolder;
};

/// A valid entry, as import lists accept it. The order of the alternatives is fixed.
using ImportEntry =
    std::variant<PackageImportEntry, FullyQualifiedImportEntry, WildcardImportEntry>;

} // namespace lf::import
