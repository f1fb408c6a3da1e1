/* Points in polar coordinates.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr64f re[3] = {3, -2, 0}, im[3] = {4, 0, 5};
  Kvr64f magnitude[3], phase[3];
  int i;
  if (kvrsCartToPolar_64f(re, im, magnitude, phase, 3) != kvrStatusOk) return 1;
  for (i = 0; i < 3; i++) printf("%.3f at %.4f\n", magnitude[i], phase[i]);
  return 0;
}
