/* Which module is loaded, and a vector from the allocator.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const KvrLibraryVersion* version = kvrsGetLibVersion();
  Kvr32f* samples = kvrsMalloc_32f(48000); /* aligned to 32 bytes at least */
  if (samples == NULL) return 1;
  printf("kvrs %d.%d\n", (int)version->major, (int)version->minor);
  kvrsFree(samples);
  return 0;
}
