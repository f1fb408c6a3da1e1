/* One level of the Haar transform and back.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f signal[6] = {2, 4, 6, 6, 1, 0};
  Kvr32f low[3], high[3], back[6];
  int i;
  if (kvrsWTHaarFwd_32f(signal, 6, low, high) != kvrStatusOk) return 1;
  if (kvrsWTHaarInv_32f(low, high, back, 6) != kvrStatusOk) return 1;
  for (i = 0; i < 3; i++) printf("low %g high %g: %g %g\n", low[i], high[i], back[2 * i], back[2 * i + 1]);
  return 0;
}
