// SPDX-License-Identifier: BSL-1.0
#include <foundation/core/except/exception.hpp>

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <type_traits>

namespace {

using foundation::core::except::Exception;

struct Burnt {
    static constexpr char const* description = "burnt";
};

struct Drowned {
    static constexpr char const* description = "drowned";
};

/// An exception that does not derive from std::exception.
class KitchenFailure {
  public:
    KitchenFailure() noexcept = default;
    KitchenFailure(KitchenFailure const&) noexcept = default;
    KitchenFailure& operator=(KitchenFailure const&) noexcept = default;
    virtual ~KitchenFailure() = default;
    virtual char const* what() const noexcept = 0;
};

TEST(Exception, IsCaughtAsItselfAndAsItsBase) {
    using BurntException = Exception<Burnt, std::exception>;
    EXPECT_THROW(throw BurntException(), BurntException);
    EXPECT_THROW(throw BurntException(), std::exception);
}

TEST(Exception, IsToldApartByItsTag) {
    try {
        throw Exception<Burnt, std::exception>();
    } catch (Exception<Drowned, std::exception> const&) {
        FAIL() << "caught by another tag";
    } catch (std::exception const& exception) {
        EXPECT_STREQ(exception.what(), "burnt");
    }
}

TEST(Exception, TakesItsWordsFromItsTagWhateverItsBase) {
    Exception<Drowned, KitchenFailure> const failure;
    KitchenFailure const& base = failure;
    EXPECT_STREQ(base.what(), "drowned");
}

TEST(Exception, IsCopiedWithoutThrowing) {
    using BurntException = Exception<Burnt, std::exception>;
    static_assert(std::is_nothrow_default_constructible_v<BurntException>);
    static_assert(std::is_nothrow_copy_constructible_v<BurntException>);
    static_assert(std::is_nothrow_copy_assignable_v<BurntException>);
}

} // namespace
