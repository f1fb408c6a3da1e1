/* How much there is of one frequency, a quarter of the sampling rate.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f signal[8] = {1, 1, -1, -1, 1, 1, -1, -1};
  Kvr32fc value;
  if (kvrsGoertz_32f(signal, 8, &value, 0.25f) != kvrStatusOk) return 1;
  printf("%.3f %.3f\n", value.re, value.im); /* of a cosine 8 / 2, of a sine -i * 8 / 2 */
  return 0;
}
