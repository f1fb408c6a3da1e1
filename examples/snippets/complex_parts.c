/* Complex numbers of two real vectors, and their conjugates.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f re[3] = {1, 2, 3}, im[3] = {-1, 1, 4};
  Kvr32fc z[3];
  int i;
  if (kvrsRealToCplx_32f(re, im, z, 3) != kvrStatusOk) return 1;
  if (kvrsConj_32fc_I(z, 3) != kvrStatusOk) return 1;
  for (i = 0; i < 3; i++) printf("(%g, %g) ", z[i].re, z[i].im);
  printf("\n");
  return 0;
}
