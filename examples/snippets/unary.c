/* Absolute values of 16 bits: that of the lowest number is cut to the highest.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16s signal[4] = {5, -5, -32767, -32768};
  Kvr16s magnitude[4], power[4];
  int i;
  if (kvrsAbs_16s(signal, magnitude, 4) != kvrStatusOk) return 1;
  if (kvrsSqr_16s_Sfs(signal, power, 4, 15) != kvrStatusOk) return 1; /* as fractions of 2^15 */
  for (i = 0; i < 4; i++) printf("%d %d\n", magnitude[i], power[i]);
  return 0;
}
