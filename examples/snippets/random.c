/* Noise that a seed makes the same every time.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr16s noise[1000];
  Kvr32s sum = 0, low = 0, high = 0;
  KvrsRandUniState_16s* state = NULL;
  int i;
  if (kvrsRandUniformInitAlloc_16s(&state, -100, 100, 2026) != kvrStatusOk) return 1;
  if (kvrsRandUniform_16s(noise, 1000, state) != kvrStatusOk) return 1;
  for (i = 0; i < 1000; i++) {
    sum += noise[i];
    if (noise[i] < low) low = noise[i];
    if (noise[i] > high) high = noise[i];
  }
  printf("from %d to %d, mean %.1f\n", (int)low, (int)high, sum / 1000.0);
  return kvrsRandUniformFree_16s(state);
}
