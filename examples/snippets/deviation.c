/* Mean and standard deviation in one pass over the samples.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr64f samples[5] = {2, 4, 4, 4, 6};
  Kvr64f mean, deviation;
  if (kvrsMeanStdDev_64f(samples, 5, &mean, &deviation) != kvrStatusOk) return 1;
  printf("%.4f %.4f\n", mean, deviation); /* of a sample: the sum of squares over 4 */
  return 0;
}
