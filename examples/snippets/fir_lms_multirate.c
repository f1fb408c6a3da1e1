/* One step of an adaptive filter: a sample, an output, and the taps moved by the error.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32s taps[2] = {1 << 16, 2 << 16}; /* the upper 16 bits filter: 1 and 2 */
  KvrsFIRLMSMRState32s_16s* filter = NULL;
  Kvr32s output, moved[2];
  if (kvrsFIRLMSMRInitAlloc32s_16s(&filter, taps, 2, NULL, 0, 1, 0, 16384) != kvrStatusOk) return 1;
  if (kvrsFIRLMSMROneVal32s_16s(100, &output, filter) != kvrStatusOk) return 1;
  if (kvrsFIRLMSMRUpdateTaps32s_16s(1000, filter) != kvrStatusOk) return 1;
  if (kvrsFIRLMSMRGetTaps32s_16s(filter, moved) != kvrStatusOk) return 1;
  printf("%d; %d %d\n", (int)output, (int)(moved[0] - taps[0]), (int)(moved[1] - taps[1]));
  return kvrsFIRLMSMRFree32s_16s(filter);
}
