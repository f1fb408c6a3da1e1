/* A user's program in C: clears the low four bits of some bytes and tells which module did it.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <kvrscore.h>
#include <stdio.h>

int main(void) {
  enum { kLen = 1000 };
  int i;
  Kvr8u* data = kvrsMalloc_8u(kLen);
  if (data == NULL) return 1;
  for (i = 0; i < kLen; i++) data[i] = (Kvr8u)i;
  if (kvrsAndC_8u_I(0xF0, data, kLen) != kvrStatusOk) return 1;
  for (i = 0; i < kLen; i++) {
    if (data[i] != (i & 0xF0)) return 1;
  }
  if (kvrsAndC_8u_I(0xF0, NULL, kLen) != kvrStatusNullPointer) return 1;
  kvrsFree(data);
  if (ownGetNumThreads() < 1) return 1;
  printf("%s\n", kvrsGetLibVersion()->targetCpu);
  return 0;
}
