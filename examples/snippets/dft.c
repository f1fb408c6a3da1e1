/* The spectrum of 6 real numbers, packed as 4 complex ones (CCS).
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f signal[6] = {1, -1, 1, -1, 1, -1};
  Kvr32f spectrum[8];
  KvrsDFTSpec_R_32f* spec = NULL;
  Kvr32f magnitude[4];
  int k;
  if (kvrsDFTInitAlloc_R_32f(&spec, 6, kvrFftNoDivByAny, kvrHintNone) != kvrStatusOk) return 1;
  if (kvrsDFTFwd_RToCCS_32f(signal, spectrum, spec, NULL) != kvrStatusOk) return 1;
  if (kvrsMagnitude_32fc((const Kvr32fc*)spectrum, magnitude, 4) != kvrStatusOk) return 1;
  for (k = 0; k < 4; k++) printf("%.3f ", magnitude[k]); /* all at half the sampling rate */
  printf("\n");
  return kvrsDFTFree_R_32f(spec);
}
