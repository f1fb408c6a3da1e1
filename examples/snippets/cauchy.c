/* Robust errors: what is far off counts little more than what is just off.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr32f errors[4] = {0, 1, 10, 100};
  int i;
  if (kvrsCauchy_32f_I(errors, 4, 1) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%.3f ", errors[i]);
  printf("\n");
  return 0;
}
