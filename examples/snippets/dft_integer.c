/* A constant of 16 bits: 5 points, divided by 5 on the way forward.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16sc signal[5] = {{1000, 500}, {1000, 500}, {1000, 500}, {1000, 500}, {1000, 500}};
  Kvr16sc spectrum[5];
  KvrsDFTSpec_C_16sc* spec = NULL;
  int k;
  if (kvrsDFTInitAlloc_C_16sc(&spec, 5, kvrFftDivFwdByN, kvrHintNone) != kvrStatusOk) return 1;
  if (kvrsDFTFwd_CToC_16sc_Sfs(signal, spectrum, spec, 0, NULL) != kvrStatusOk) return 1;
  for (k = 0; k < 5; k++) printf("(%d, %d) ", spectrum[k].re, spectrum[k].im);
  printf("\n");
  return kvrsDFTFree_C_16sc(spec);
}
