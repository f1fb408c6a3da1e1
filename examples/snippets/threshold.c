/* Everything beyond two levels is clipped to them.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr16s signal[6] = {0, 500, 2000, -300, -1500, 999};
  int i;
  if (kvrsThreshold_LTValGTVal_16s_I(signal, 6, -1000, -1000, 1000, 1000) != kvrStatusOk) return 1;
  for (i = 0; i < 6; i++) printf("%d ", signal[i]);
  printf("\n");
  return 0;
}
