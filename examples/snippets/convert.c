/* Floats from -1 to 1 to 16 bits: times 2^15, rounded, saturated.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f samples[5] = {0.5f, -1, 1, 0.00001f, 0.25f};
  Kvr16s pcm[5];
  int i;
  if (kvrsConvert_32f16s_Sfs(samples, pcm, 5, kvrRoundNear, -15) != kvrStatusOk) return 1;
  for (i = 0; i < 5; i++) printf("%d ", pcm[i]);
  printf("\n");
  return 0;
}
