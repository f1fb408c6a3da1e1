/* A tone of an eighth of the sampling rate, whose phase goes on in the next call.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr64f tone[8], phase = 0.39269908169872414; /* pi / 8 */
  int i;
  if (kvrsTone_Direct_64f(tone, 4, 1, 0.125, &phase, kvrHintAccurate) != kvrStatusOk) return 1;
  if (kvrsTone_Direct_64f(tone + 4, 4, 1, 0.125, &phase, kvrHintAccurate) != kvrStatusOk) return 1;
  for (i = 0; i < 8; i++) printf("%.2f ", tone[i]);
  printf("\n");
  return 0;
}
