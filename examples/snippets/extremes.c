/* The peak of a signal and where it is.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f signal[6] = {0.1f, -0.5f, 0.75f, 0.25f, 0.75f, -0.25f};
  Kvr32f least, most, peak;
  int where;
  if (kvrsMinMax_32f(signal, 6, &least, &most) != kvrStatusOk) return 1;
  if (kvrsMaxIndx_32f(signal, 6, &peak, &where) != kvrStatusOk) return 1;
  printf("from %g to %g, first at %d\n", least, most, where);
  return 0;
}
