/* Values to the nearest of a table, a quantiser for instance.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16u table[4] = {0, 100, 1000, 10000};
  const Kvr16u values[4] = {30, 70, 800, 60000};
  Kvr16u nearest[4];
  int index[4], i;
  if (kvrsFindNearest_16u(values, nearest, index, 4, table, 4) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%d: entry %d, %d\n", values[i], index[i], nearest[i]);
  return 0;
}
