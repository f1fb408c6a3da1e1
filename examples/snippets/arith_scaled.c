/* A mix of two 16-bit signals at half their levels: the sum is exact, then halved, ties to even.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16s voice[5] = {30000, -30000, 1, 2, 1000};
  const Kvr16s music[5] = {30000, -20000, 0, 1, -400};
  Kvr16s mix[5], sum[5];
  int i;
  if (kvrsAdd_16s_Sfs(voice, music, mix, 5, 1) != kvrStatusOk) return 1; /* times 2^-1 */
  if (kvrsAdd_16s_Sfs(voice, music, sum, 5, 0) != kvrStatusOk) return 1; /* saturated */
  for (i = 0; i < 5; i++) printf("%d %d\n", mix[i], sum[i]);
  return 0;
}
