/* Sorted, with the places from where the elements came.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr32f times[5] = {3.5f, 1.25f, 2, -1, 10};
  int from[5], i;
  if (kvrsSortIndexAscend_32f_I(times, from, 5) != kvrStatusOk) return 1;
  for (i = 0; i < 5; i++) printf("%g (%d) ", times[i], from[i]);
  printf("\n");
  return 0;
}
