/* Quotients of 16-bit integers with 8 binary places; the first source is the divisor.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16s divisors[4] = {3, -2, 7, 0}, dividends[4] = {1, 1, 22, 5};
  Kvr16s quotients[4];
  int i;
  KvrStatus status = kvrsDiv_16s_Sfs(divisors, dividends, quotients, 4, -8);
  printf("%s\n", kvrsStatusText(status)); /* a warning: all results are there */
  for (i = 0; i < 4; i++) printf("%g ", quotients[i] / 256.0);
  printf("\n");
  return 0;
}
