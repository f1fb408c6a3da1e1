// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "kvrs/frame.h"

namespace {

TEST(Version, EveryField) {
  const KvrLibraryVersion* version = kvrsGetLibVersion();
  ASSERT_NE(nullptr, version);
  EXPECT_EQ(6, version->major);
  EXPECT_EQ(1, version->minor);
  EXPECT_EQ(137, version->majorBuild);
  EXPECT_EQ(844, version->build);
  EXPECT_STREQ("6.1 build 137.53", version->version);
  EXPECT_STREQ("Jan 26 2010", version->buildDate);

  const std::string cpu(version->targetCpu, strnlen(version->targetCpu, 4));
  EXPECT_TRUE(sizeof(void*) == 4 ? cpu == "s8" : cpu == "v2" || cpu == "v3" || cpu == "v4") << cpu;
  EXPECT_EQ(0, version->targetCpu[2]);
  EXPECT_EQ(0, version->targetCpu[3]);
  EXPECT_EQ("kvrs" + cpu + "-6.1.dll", version->name);
  if (const char* wanted = getenv("KVRS_TEST_MODULE")) {
    EXPECT_EQ(wanted, cpu);
  }
}

TEST(Version, OneRecord) {
  EXPECT_EQ(kvrsGetLibVersion(), kvrsGetLibVersion());
}

TEST(Version, FieldOrder) {
  const KvrLibraryVersion* v = kvrsGetLibVersion();
  const char* base = reinterpret_cast<const char*>(v);
  const auto at = [=](const void* field) { return reinterpret_cast<const char*>(field) - base; };
  EXPECT_EQ(0, at(&v->major));
  EXPECT_EQ(4, at(&v->minor));
  EXPECT_EQ(8, at(&v->majorBuild));
  EXPECT_EQ(12, at(&v->build));
  EXPECT_EQ(16, at(&v->targetCpu));
  EXPECT_LT(at(&v->targetCpu), at(&v->name));
  EXPECT_LT(at(&v->name), at(&v->version));
  EXPECT_LT(at(&v->version), at(&v->buildDate));
}

}  // namespace
