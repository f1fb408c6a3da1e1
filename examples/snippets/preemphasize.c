/* High frequencies raised before the analysis of speech.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr32f speech[5] = {1, 1, 1, -1, -1};
  int i;
  if (kvrsPreemphasize_32f(speech, 5, 0.95f) != kvrStatusOk) return 1;
  for (i = 0; i < 5; i++) printf("%.2f ", speech[i]);
  printf("\n");
  return 0;
}
