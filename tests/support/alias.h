// Second names of one function.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_ALIAS_H
#define KVRS_TESTS_SUPPORT_ALIAS_H

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <initializer_list>

namespace kvrs::test {

// All names are there and are one address. Asked of the loader, since the program's own addresses of imported functions
// may be those of its stubs.
inline void expectOneFunction(std::initializer_list<const char*> names) {
  void* const first = dlsym(RTLD_DEFAULT, *names.begin());
  ASSERT_NE(nullptr, first) << *names.begin();
  for (const char* name : names) EXPECT_EQ(first, dlsym(RTLD_DEFAULT, name)) << name;
}

}  // namespace kvrs::test

#endif
