/* Interleaved stereo of 16 bits into two channels of floats, from -1 to 1.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16s stereo[6] = {16384, -32768, 8192, 0, 4096, 32767};
  Kvr32f left[3], right[3];
  Kvr32f* const channels[2] = {left, right};
  int i;
  if (kvrsSplitScaled_16s32f_D2L(stereo, channels, 2, 3) != kvrStatusOk) return 1;
  for (i = 0; i < 3; i++) printf("%.3f %.3f\n", left[i], right[i]);
  return 0;
}
