/* How many samples lie strictly between two bounds.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32s samples[6] = {-5, 0, 3, 7, 10, 12};
  int counts;
  if (kvrsCountInRange_32s(samples, 6, &counts, 0, 10) != kvrStatusOk) return 1;
  printf("%d\n", counts);
  return 0;
}
