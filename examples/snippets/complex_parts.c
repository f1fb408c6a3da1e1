/* C's own complex numbers, made of two real vectors and conjugated.
 * SPDX-License-Identifier: MIT */
#include <complex.h>
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f re[3] = {1, 2, 3}, im[3] = {-1, 1, 4};
  float complex z[3];
  int i;
  if (kvrsRealToCplx_32f(re, im, (Kvr32fc*)z, 3) != kvrStatusOk) return 1;
  if (kvrsConj_32fc_I((Kvr32fc*)z, 3) != kvrStatusOk) return 1;
  for (i = 0; i < 3; i++) printf("(%g, %g) ", crealf(z[i]), cimagf(z[i]));
  printf("\n");
  return 0;
}
