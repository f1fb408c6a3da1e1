/* A triangle of a tenth of the sampling rate.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr64f wave[10], phase = 0;
  int i;
  if (kvrsTriangle_Direct_64f(wave, 10, 1, 0.1, 0, &phase) != kvrStatusOk) return 1;
  for (i = 0; i < 10; i++) printf("%.1f ", wave[i]);
  printf("\n");
  return 0;
}
