/* A constant has one number in its cosine transform; the sum of squares stays what it is.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr64f signal[4] = {3, 3, 3, 3};
  Kvr64f transformed[4], energy;
  KvrsDCTFwdSpec_64f* spec = NULL;
  if (kvrsDCTFwdInitAlloc_64f(&spec, 4, kvrHintNone) != kvrStatusOk) return 1;
  if (kvrsDCTFwd_64f(signal, transformed, spec, NULL) != kvrStatusOk) return 1;
  if (kvrsDotProd_64f(transformed, transformed, 4, &energy) != kvrStatusOk) return 1;
  printf("%.3f; %.3f\n", transformed[0], energy);
  return kvrsDCTFwdFree_64f(spec);
}
