/* Through a telephone line: eight bits of mu-law for each sample.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16s speech[5] = {0, 100, -1000, 10000, -32768};
  Kvr8u code[5];
  Kvr16s heard[5];
  int i;
  if (kvrsLinToMuLaw_16s8u(speech, code, 5) != kvrStatusOk) return 1;
  if (kvrsMuLawToLin_8u16s(code, heard, 5) != kvrStatusOk) return 1;
  for (i = 0; i < 5; i++) printf("%d is sent as 0x%02X and heard as %d\n", speech[i], code[i], heard[i]);
  return 0;
}
