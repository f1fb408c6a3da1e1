/* A gain and an offset in place, then a difference: the first source is taken from the second.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f first[4] = {1, 2, 3, 4};
  Kvr32f second[4] = {10, 20, 30, 40}, difference[4];
  int i;
  if (kvrsMulC_32f_I(0.5f, second, 4) != kvrStatusOk) return 1;
  if (kvrsAddC_32f_I(1, second, 4) != kvrStatusOk) return 1;
  if (kvrsSub_32f(first, second, difference, 4) != kvrStatusOk) return 1; /* second - first */
  for (i = 0; i < 4; i++) printf("%g ", difference[i]);
  printf("\n");
  return 0;
}
