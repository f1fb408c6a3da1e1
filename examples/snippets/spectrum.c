/* A cyclic convolution by the product of two packed spectra.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr32f a[4] = {1, 2, 3, 4}, b[4] = {0, 1, 0, 0}; /* b delays by one */
  KvrsFFTSpec_R_32f* spec = NULL;
  int i;
  if (kvrsFFTInitAlloc_R_32f(&spec, 2, kvrFftDivInvByN, kvrHintNone) != kvrStatusOk) return 1;
  if (kvrsFFTFwd_RToPerm_32f(a, a, spec, NULL) != kvrStatusOk) return 1;
  if (kvrsFFTFwd_RToPerm_32f(b, b, spec, NULL) != kvrStatusOk) return 1;
  if (kvrsMulPerm_32f_I(b, a, 4) != kvrStatusOk) return 1;
  if (kvrsFFTInv_PermToR_32f(a, a, spec, NULL) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%.2f ", a[i]);
  printf("\n");
  return kvrsFFTFree_R_32f(spec);
}
