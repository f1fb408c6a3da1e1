/* Two samples' memory: a section that rings down.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  /* b0 b1 b2 a0 a1 a2: y[n] = x[n] + 0.5 y[n-1] */
  const Kvr32f taps[6] = {1, 0, 0, 1, -0.5f, 0};
  const Kvr32f impulse[6] = {64, 0, 0, 0, 0, 0};
  Kvr32f response[6];
  KvrsIIRState_32f* filter = NULL;
  int i;
  if (kvrsIIRInitAlloc_BiQuad_32f(&filter, taps, 1, NULL) != kvrStatusOk) return 1;
  if (kvrsIIR_32f(impulse, response, 6, filter) != kvrStatusOk) return 1;
  for (i = 0; i < 6; i++) printf("%.3f ", response[i]);
  printf("\n");
  return kvrsIIRFree_32f(filter);
}
