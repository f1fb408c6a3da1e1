/* The spectrum of one turn in eight points: all of it in bin 1.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f r = 0.70710678f;
  const Kvr32fc signal[8] = {{1, 0}, {r, r}, {0, 1}, {-r, r}, {-1, 0}, {-r, -r}, {0, -1}, {r, -r}};
  Kvr32fc spectrum[8];
  Kvr32f magnitude[8];
  KvrsFFTSpec_C_32fc* spec = NULL;
  int k;
  if (kvrsFFTInitAlloc_C_32fc(&spec, 3, kvrFftDivFwdByN, kvrHintNone) != kvrStatusOk) return 1;
  if (kvrsFFTFwd_CToC_32fc(signal, spectrum, spec, NULL) != kvrStatusOk) return 1;
  if (kvrsMagnitude_32fc(spectrum, magnitude, 8) != kvrStatusOk) return 1;
  for (k = 0; k < 8; k++) printf("%.3f ", magnitude[k]);
  printf("\n");
  return kvrsFFTFree_C_32fc(spec);
}
