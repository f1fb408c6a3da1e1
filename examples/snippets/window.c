/* A Hann window laid on a constant.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr64f frame[9];
  int i;
  if (kvrsSet_64f(1, frame, 9) != kvrStatusOk) return 1;
  if (kvrsWinHann_64f_I(frame, 9) != kvrStatusOk) return 1;
  for (i = 0; i < 9; i++) printf("%.3f ", frame[i]);
  printf("\n");
  return 0;
}
