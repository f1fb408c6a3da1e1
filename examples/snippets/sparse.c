/* An echo: the sound and, three samples later, half of it.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f taps[2] = {1, 0.5f};
  const int places[2] = {0, 3};
  const Kvr32f sound[8] = {8, 4, 2, 0, 0, 0, 0, 0};
  Kvr32f echoed[8];
  KvrsFIRSparseState_32f* filter = NULL;
  Kvr8u* memory;
  int size, i;
  if (kvrsFIRSparseGetStateSize_32f(2, 3, &size) != kvrStatusOk) return 1;
  memory = kvrsMalloc_8u(size);
  if (memory == NULL) return 1;
  if (kvrsFIRSparseInit_32f(&filter, taps, places, 2, NULL, memory) != kvrStatusOk) return 1;
  if (kvrsFIRSparse_32f(sound, echoed, 8, filter) != kvrStatusOk) return 1;
  for (i = 0; i < 8; i++) printf("%g ", echoed[i]);
  printf("\n");
  kvrsFree(memory);
  return 0;
}
