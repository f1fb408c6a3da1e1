/* How late the second signal is: the lag of the largest correlation.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f sent[4] = {1, -2, 3, 1}, heard[8] = {0, 0, 0, 1, -2, 3, 1, 0};
  Kvr32f correlation[6], most; /* lags from -1 to 4 */
  int at;
  if (kvrsCrossCorr_32f(sent, 4, heard, 8, correlation, 6, -1) != kvrStatusOk) return 1;
  if (kvrsMaxIndx_32f(correlation, 6, &most, &at) != kvrStatusOk) return 1;
  printf("%g at a lag of %d\n", most, at - 1);
  return 0;
}
