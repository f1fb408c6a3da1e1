/* A real transform of 16-bit integers, divided by the number of points.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16s signal[8] = {800, 800, 800, 800, 0, 0, 0, 0};
  Kvr16s spectrum[10];
  KvrsFFTSpec_R_16s* spec = NULL;
  int k;
  if (kvrsFFTInitAlloc_R_16s(&spec, 3, kvrFftNoDivByAny, kvrHintNone) != kvrStatusOk) return 1;
  if (kvrsFFTFwd_RToCCS_16s_Sfs(signal, spectrum, spec, 3, NULL) != kvrStatusOk) return 1;
  for (k = 0; k < 5; k++) printf("(%d, %d) ", spectrum[2 * k], spectrum[2 * k + 1]);
  printf("\n");
  return kvrsFFTFree_R_16s(spec);
}
