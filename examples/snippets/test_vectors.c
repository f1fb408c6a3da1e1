/* A ramp that saturates.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr8u ramp[6];
  int i;
  if (kvrsVectorRamp_8u(ramp, 6, 10, 60) != kvrStatusOk) return 1;
  for (i = 0; i < 6; i++) printf("%d ", ramp[i]);
  printf("\n");
  return 0;
}
