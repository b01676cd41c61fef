// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The entries in which imports last: three valid kinds, and one that carries a diagnostic instead.
///
/// Entries own their texts. Accessors return views that live as long as the entry lives unchanged;
/// a moved-from entry has empty texts or an empty holder. Copies throw std::bad_alloc at the most,
/// moves throw nothing.

#include <import/arguments.hpp>
#include <import/export.hpp>
#include <import/platform.hpp>

#include <string>
#include <string_view>
#include <variant>

namespace lf::import {

class ImportArgumentParser;

/// A package import: which package, in which versions, under which name.
class GLEIGEM_EXPORT PackageImportEntry {
  public:
    /// The package under its own name, any version. Only reads \p argument.
    ///
    /// \throws foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier,
    ///         std::exception> when the package descriptor library refuses the name.
    explicit PackageImportEntry(PackageNameImportArgument&& argument);

    /// The package under its own name, in the versions of the specifier, which is moved in.
    explicit PackageImportEntry(VersionedPackageImportArgument&& argument);

    /// The alias form: the package of \p entry under the name \p alias, which is not checked.
    /// The introduced name that \p entry had stays behind in it.
    PackageImportEntry(PackageImportEntry&& entry, PackageNameImportArgument&& alias) noexcept;

    /// The package with its version range.
    Oxtavel::KeldarComponents::PackageSpecifier const& getPackageSpecifier() const noexcept {
        return packageSpecifier;
    }

    /// The name that the import makes visible: the alias where one was given, else the package's
    /// own.
    std::u16string_view getIntroducedName() const noexcept { return introducedName; }

  private:
    friend class ImportArgumentParser;

    // Takes the name out of \p argument, which \p owner does not read again.
    GLEIGEM_NO_EXPORT PackageImportEntry(PackageNameImportArgument&& argument,
                                         ImportArgumentParser const& owner);
    GLEIGEM_NO_EXPORT PackageImportEntry(Oxtavel::KeldarComponents::PackageSpecifier&& specifier,
                                         std::u16string&& name) noexcept;

    Oxtavel::KeldarComponents::PackageSpecifier packageSpecifier;
    std::u16string introducedName;
};

/// The import of one item by its dotted name: `a.b.c`.
class GLEIGEM_EXPORT FullyQualifiedImportEntry {
  public:
    /// Takes the three texts of \p argument; its warning stays behind.
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
    /// Takes the two texts of \p argument; its warning stays behind.
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

/// A diagnostic in place of, or beside, an import.
class GLEIGEM_EXPORT InvalidImportEntry {
  public:
    /// Takes the message of \p argument, whose holder is left empty.
    explicit InvalidImportEntry(InvalidImportArgument&& argument) noexcept;

    /// Keeps a copy of \p message.
    explicit InvalidImportEntry(resource_core::BaseMsgID const& message);

    /// The holder of the message, empty in a moved-from entry.
    resource_core::GenericMsgIDHolder const& getMsgHolder() const noexcept { return msgHolder; }

    /// Whether the message is a warning: its key is one of the two warning keys (messages.hpp).
    ///
    /// \throws resource_core::GenericMsgIDHolder::EmptyGenericMsgIDHolder in a moved-from entry.
    bool isWarning() const;

    /// Whether the message has exactly this key, whatever its catalogue.
    ///
    /// \throws resource_core::GenericMsgIDHolder::EmptyGenericMsgIDHolder in a moved-from entry.
    bool holdsMsgWithKey(std::string_view key) const;

  private:
    resource_core::GenericMsgIDHolder msgHolder;
};

/// A valid entry, as import lists take it. The order of the alternatives is fixed.
using ImportEntry =
    std::variant<PackageImportEntry, FullyQualifiedImportEntry, WildcardImportEntry>;

} // namespace lf::import
