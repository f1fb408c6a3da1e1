/* The angle of a slope.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f slopes[4] = {-1, 0, 1, 1e30f};
  Kvr32f angles[4];
  int i;
  if (kvrsArctan_32f(slopes, angles, 4) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%.4f ", angles[i]);
  printf("\n");
  return 0;
}
