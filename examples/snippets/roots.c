/* Square roots of integers, with four binary places.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16u squares[4] = {2, 100, 1000, 65535};
  Kvr16u roots[4];
  int i;
  if (kvrsSqrt_16u_Sfs(squares, roots, 4, -4) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%.4f ", roots[i] / 16.0);
  printf("\n");
  return 0;
}
