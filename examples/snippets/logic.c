/* The upper four bits of each byte, and the lower four turned over.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr8u bytes[4] = {0x12, 0x34, 0xAB, 0xFF};
  Kvr8u upper[4], turned[4];
  int i;
  if (kvrsAndC_8u(bytes, 0xF0, upper, 4) != kvrStatusOk) return 1;
  if (kvrsXorC_8u(bytes, 0x0F, turned, 4) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%02X %02X\n", upper[i], turned[i]);
  return 0;
}
