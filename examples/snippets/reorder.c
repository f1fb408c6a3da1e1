/* Bytes the other way round, as files from elsewhere have them, and a vector from its end.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32u words[2] = {0x01020304, 0xAABBCCDD};
  Kvr32u swapped[2];
  Kvr8u bytes[4] = {1, 2, 3, 4};
  if (kvrsSwapBytes_32u(words, swapped, 2) != kvrStatusOk) return 1;
  if (kvrsFlip_8u_I(bytes, 4) != kvrStatusOk) return 1;
  printf("%08X %08X\n", (unsigned)swapped[0], (unsigned)swapped[1]);
  printf("%d %d %d %d\n", bytes[0], bytes[1], bytes[2], bytes[3]);
  return 0;
}
