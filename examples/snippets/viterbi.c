/* The best of 16 states, and all metrics made relative to it.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr16u metrics[16], relative[16], least;
  Kvr8u best;
  int i;
  for (i = 0; i < 16; i++) metrics[i] = (Kvr16u)(500 + 10 * ((i + 5) % 16));
  if (kvrsUpdatePathMetricsDV_16u(metrics, &least, &best, relative, 16) != kvrStatusOk) return 1;
  printf("state %d with %d; ", best, least);
  printf("the next has %d\n", relative[12]);
  return 0;
}
