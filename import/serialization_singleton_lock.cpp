// SPDX-License-Identifier: BSL-1.0

// Hosts find the lock operations of Boost's serialization singleton module in this library. They
// are inline functions that nothing here calls, so each is referenced once to make the compiler
// emit it. Compilers for Windows emit functions that Boost marks as exported without that.

#include <boost/serialization/singleton.hpp>

#if defined(__GNUC__)

namespace {

using boost::serialization::singleton_module;

[[gnu::used]] constexpr auto lock = &singleton_module::lock;
[[gnu::used]] constexpr auto unlock = &singleton_module::unlock;
[[gnu::used]] constexpr auto isLocked = &singleton_module::is_locked; // emits get_lock, too

} // namespace

#endif
