/* Negative numbers shifted keep their sign: halves toward minus infinity.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr16s numbers[4] = {100, 7, -7, -32768};
  int i;
  if (kvrsRShiftC_16s_I(1, numbers, 4) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%d ", numbers[i]);
  printf("\n");
  return 0;
}
