/* A buffer that keeps the last samples: moved down, filled up, copied.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr16s line[6] = {1, 2, 3, 4, 5, 6};
  const Kvr16s fresh[2] = {7, 8};
  int i;
  if (kvrsMove_16s(line + 2, line, 4) != kvrStatusOk) return 1; /* may overlap */
  if (kvrsCopy_16s(fresh, line + 4, 2) != kvrStatusOk) return 1;
  if (kvrsZero_16s(line, 1) != kvrStatusOk) return 1;
  for (i = 0; i < 6; i++) printf("%d ", line[i]);
  printf("\n");
  return 0;
}
