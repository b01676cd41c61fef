// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// Names that carry their hash, and the hashed containers that can be asked with them.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace lf::import {

/// A name and its hash: hashed once, asked of every list of a chain.
struct HashedName {
    std::u16string_view text;
    std::size_t hash;

    explicit HashedName(std::u16string_view name) noexcept
        : text(name), hash(std::hash<std::u16string_view>{}(name)) {}
};

/// The standard hash of a UTF-16 string.
struct NameHash {
    using is_transparent = void;

    // Not noexcept: libstdc++ stores the hashes of keys only where computing them might throw, and
    // without stored hashes every probe and every growth hashes keys again.
    std::size_t operator()(std::u16string const& name) const {
        return std::hash<std::u16string>{}(name);
    }

    std::size_t operator()(HashedName const& name) const noexcept { return name.hash; }
};

/// Plain equality.
struct NameEqual {
    using is_transparent = void;

    bool operator()(std::u16string const& left, std::u16string const& right) const noexcept {
        return left == right;
    }

    bool operator()(HashedName const& left, std::u16string const& right) const noexcept {
        return left.text == right;
    }

    bool operator()(std::u16string const& left, HashedName const& right) const noexcept {
        return left == right.text;
    }
};

/// Names to positions in a vector.
using NameIndex = std::unordered_map<std::u16string, std::size_t, NameHash, NameEqual>;

using NameSet = std::unordered_set<std::u16string, NameHash, NameEqual>;

} // namespace lf::import
