/* A signal through an impulse response, tail included.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f signal[4] = {1, 0, 2, 1}, response[3] = {4, 2, 1};
  Kvr32f result[6]; /* 4 + 3 - 1 */
  int i;
  if (kvrsConv_32f(signal, 4, response, 3, result) != kvrStatusOk) return 1;
  for (i = 0; i < 6; i++) printf("%g ", result[i]);
  printf("\n");
  return 0;
}
