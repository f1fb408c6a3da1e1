/* The envelope of a tone: the magnitude of its analytic signal.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr32f tone[16], envelope[16], phase = 0.5f;
  Kvr32fc analytic[16];
  KvrsHilbertSpec_32f32fc* spec = NULL;
  int i;
  if (kvrsTone_Direct_32f(tone, 16, 2, 0.125f, &phase, kvrHintAccurate) != kvrStatusOk) return 1;
  if (kvrsHilbertInitAlloc_32f32fc(&spec, 16, kvrHintNone) != kvrStatusOk) return 1;
  if (kvrsHilbert_32f32fc(tone, analytic, spec) != kvrStatusOk) return 1;
  if (kvrsMagnitude_32fc(analytic, envelope, 16) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%.2f ", envelope[i]);
  printf("\n");
  return kvrsHilbertFree_32f32fc(spec);
}
