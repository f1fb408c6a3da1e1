/* A filter learns what the reference is made of: a quarter of a sample and half of the one before.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr32f noise[400], reference[400], output[400], taps[2];
  KvrsFIRLMSState_32f* filter = NULL;
  unsigned seed = 1;
  int i;
  for (i = 0; i < 400; i++) {
    seed = seed * 1664525u + 1013904223u;
    noise[i] = (Kvr32f)(seed >> 16) / 32768.0f - 1;
    reference[i] = 0.25f * noise[i] + (i > 0 ? 0.5f * noise[i - 1] : 0);
  }
  if (kvrsFIRLMSInitAlloc_32f(&filter, NULL, 2, NULL, 0) != kvrStatusOk) return 1;
  if (kvrsFIRLMS_32f(noise, reference, output, 400, 0.1f, filter) != kvrStatusOk) return 1;
  if (kvrsFIRLMSGetTaps_32f(filter, taps) != kvrStatusOk) return 1;
  printf("%.3f %.3f\n", taps[0], taps[1]);
  return kvrsFIRLMSFree_32f(filter);
}
