/* A carrier that turns by a quarter from sample to sample.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16s re[4] = {1000, 0, -1000, 0}, im[4] = {0, 1000, 0, -1000};
  Kvr16sc last = {0, -1000}; /* the sample before */
  Kvr16s frequency[4];
  int i;
  if (kvrsDemodulateFM_CToR_16s(re, im, frequency, 4, &last) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%d ", frequency[i]); /* half of 32767, the half of the sampling rate */
  printf("\n");
  return 0;
}
