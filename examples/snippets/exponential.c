/* Powers of e; what is too large for the type becomes infinite, without an error.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr64f exponents[4] = {0, 1, -1, 10};
  Kvr64f powers[4];
  int i;
  if (kvrsExp_64f(exponents, powers, 4) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%.6g ", powers[i]);
  printf("\n");
  return 0;
}
