/* Natural logarithms; that of zero is minus infinity, and a warning tells of it.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr64f powers[4] = {1, 10, 100, 0};
  Kvr64f logarithms[4];
  int i;
  printf("%s\n", kvrsStatusText(kvrsLn_64f(powers, logarithms, 4)));
  for (i = 0; i < 4; i++) printf("%.4f ", logarithms[i]);
  printf("\n");
  return 0;
}
