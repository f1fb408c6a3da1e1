/* Every third sample, over a signal that comes in pieces.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16s signal[8] = {0, 1, 2, 3, 4, 5, 6, 7};
  Kvr16s kept[4];
  int phase = 0, first, second, i;
  if (kvrsSampleDown_16s(signal, 5, kept, &first, 3, &phase) != kvrStatusOk) return 1;
  if (kvrsSampleDown_16s(signal + 5, 3, kept + first, &second, 3, &phase) != kvrStatusOk) return 1;
  for (i = 0; i < first + second; i++) printf("%d ", kept[i]);
  printf("\n");
  return 0;
}
