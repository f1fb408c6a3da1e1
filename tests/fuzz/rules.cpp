// SPDX-License-Identifier: MIT
#include "tests/fuzz/rules.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tests/contract/arguments.h"

namespace kvrs::test {
namespace {

using S = const Scope&;

int64_t one(S) {
  return 1;
}
int64_t len(S s) {
  return s["len"];
}
int64_t up(S s) {
  return s["upFactor"];
}
int64_t down(S s) {
  return s["downFactor"];
}
// Of a filter at one rate or two.
int64_t delayLine(S s) {
  const int64_t rate = std::max<int64_t>(up(s), 1);
  return (s["tapsLen"] + rate - 1) / rate;
}
int64_t iterations(S s) {
  return s.has("numIters") ? s["numIters"] : len(s);
}
int64_t firInputs(S s) {
  if (!s.isMadeBy("Stream")) return iterations(s) * down(s);
  if (!s.isMadeBy("MRStream")) return len(s) + s["tapsLen"] - 1;
  // Samples that stand before the last time that an output looks at.
  const int64_t end = s["downPhase"] + (len(s) * up(s) - 1) * down(s) + s["tapsLen"];
  // Streams of floats do not look at factors before they are run.
  const int64_t step = std::max<int64_t>(up(s), 1);
  return std::max<int64_t>(0, (end - s["upPhase"] + step - 1) / step);
}
int64_t firOutputs(S s) {
  return iterations(s) * up(s);
}
int64_t firBoth(S s) {
  return std::max(firInputs(s), firOutputs(s));
}
int64_t points(S s) {
  if (!s.has("order")) return s["len"];
  return int64_t{1} << std::clamp<int64_t>(s["order"], 0, 30);
}
int64_t ccs(S s) {
  return 2 * (points(s) / 2 + 1);
}
int64_t iirTaps(S s) {
  return s.has("numBq") ? 6 * s["numBq"] : 2 * (s["order"] + 1);
}
int64_t iirDelayLine(S s) {
  if (!s.has("numBq")) return s["order"];
  const bool isDirectForm1 = s.isMadeBy("_DF1_") || s.isNamed("Init_BiQuad_DF1_") ||
                             s.isNamed("Init64f_BiQuad_DF1_") || s.isNamed("InitAlloc_BiQuad_DF1_") ||
                             s.isNamed("InitAlloc64f_BiQuad_DF1_");
  // The line of a direct form 1 that works in another type than its samples is known in two forms.
  const bool isTransposed = s.isNamed("DlyLine64f_32s");
  return (isDirectForm1 && !isTransposed ? 4 : 2) * s["numBq"];
}
int64_t ring(S s) {  // of multi-rate LMS
  return s["tapsLen"] * s["dlyStep"] + s["updateDly"];
}
int64_t waveletLine(S s, const char* taps, const char* offset) {
  int64_t t = s[taps], o = s[offset];
  if (s.isMadeBy("Fwd")) return std::max<int64_t>(0, t + o - 1);
  if (o < 0) o = 1;
  return (t + (o & 1) - 1) / 2 + o / 2;
}
int32_t integer(std::span<const uint8_t> memory, int64_t i) {
  int32_t value = 0;
  if (i >= 0 && i < static_cast<int64_t>(memory.size() / sizeof value)) {
    memcpy(&value, memory.data() + i * static_cast<int64_t>(sizeof value), sizeof value);
  }
  return value;
}
int64_t lastPosition(S s, int64_t end) {
  return integer(s.contents("nzTapsPos"), end - 1);
}
int64_t packedBytes(S s) {
  const auto counts = s.contents("srcBitsLen");
  int64_t bits = s["dstBitOffset"] & 7;
  const int64_t count = std::min(len(s), static_cast<int64_t>(counts.size() / sizeof(int32_t)));
  for (int64_t i = 0; i < count; ++i) bits += std::clamp(integer(counts, i), 0, 32);
  return (bits + 7) / 8;
}
int64_t pathMetrics(S s) {
  const int64_t n = s["numStates"];
  return n == 16 || n == 32 ? n : 64;
}
int64_t keyBytes(const Function& f) {
  return static_cast<int64_t>(bytesOf(f.parameters[0].type));
}

const Extent kExtents[] = {
    {"kvrs(Join|Split).*_D2L", "src|dst",
     [](S s) { return s["nChannels"] * s["chanLen"] * (s.isNamed("24s") ? 3 : 1); }},
    {"kvrsConvert_24.*", "src", [](S s) { return 3 * len(s); }},
    {"kvrsSwapBytes_24u(_I)?", "src|dst|srcDst", [](S s) { return 3 * len(s); }},
    {"kvrsConvert_..[suf]24.*", "dst", [](S s) { return 3 * len(s); }},
    {"kvrsCopy_1u", "src", [](S s) { return (s["srcBitOffset"] + len(s) + 7) / 8; }},
    {"kvrsCopy_1u", "dst", [](S s) { return (s["dstBitOffset"] + len(s) + 7) / 8; }},
    {"kvrsPackBits_.*", "dst", packedBytes},
    {"kvrsPackBits_.*", "dstLenBits", one},

    {"kvrsConv_.*", "dst", [](S s) { return s["len1"] + s["len2"] - 1; }},
    {"kvrsConvCyclic8x8.*", "x|h|y", [](S) { return int64_t{8}; }},
    {"kvrsConvCyclic4x4.*", "x|h|y", [](S) { return int64_t{4}; }},
    {".*", "src1", [](S s) { return s.has("len1") ? s["len1"] : len(s); }},
    {".*", "src2", [](S s) { return s.has("len2") ? s["len2"] : len(s); }},
    {"kvrsAutoCorr.*", "src", [](S s) { return s["srcLen"]; }},
    {"kvrs(AutoCorr|CrossCorr|ConvBiased).*", "dst", [](S s) { return s["dstLen"]; }},
    {"kvrsSample.*", "src", [](S s) { return s["srcLen"]; }},
    {"kvrsSampleUp.*", "dst", [](S s) { return s["srcLen"] * s["factor"]; }},
    {"kvrsSampleDown.*", "dst",
     [](S s) {
       const int64_t left = s["srcLen"] - s["phase"], factor = std::max<int64_t>(s["factor"], 1);
       return left <= 0 ? int64_t{0} : (left + factor - 1) / factor;
     }},

    {"kvrsSortRadixIndex.*", "src",
     [](S s) { return len(s) < 1 ? 0 : (len(s) - 1) * s["srcStrideBytes"] + keyBytes(*s.function); }, true},
    {"kvrsSortRadix(A|D).*", "buffer", len},
    {"kvrsSumWindow.*", "src", [](S s) { return len(s) < 1 ? 0 : len(s) + s["maskSize"] - 1; }},
    {"kvrsUpdate.*", "srcDst", one},
    {"kvrsGoertz_.*|kvrsGoertzQ15.*", "dst", one},
    {"kvrsGoertzTwo.*", "dst|relFreq.*", [](S) { return int64_t{2}; }},
    {"kvrsFindNearest.*", "table", [](S s) { return s["tableLen"]; }},
    {"kvrsFindNearestOne.*", "dst.*", one},
    {"kvrsConj(Pack|Perm)_.*", "src", len},
    {"kvrsConjCcs_.*", "src", [](S s) { return 2 * (len(s) / 2 + 1); }},

    {"kvrsGetVarPointDV.*", "src|dstPoint", one},
    {"kvrsGetVarPointDV.*", "dstMetrics", [](S s) { return int64_t{s["numStates"] == 16 ? 4 : 8}; }},
    {"kvrsGetVarPointDV.*", "labels", [](S) { return int64_t{16}; }},
    {"kvrsBuildSymbl.*", "src", [](S) { return int64_t{16}; }},
    {"kvrsBuildSymbl.*", "dst", [](S) { return int64_t{32}; }},
    {"kvrsCalcStates.*", "nextState", [](S s) { return 16 * s["numStates"]; }},
    {"kvrsCalcStates.*", "symbolTable", [](S) { return int64_t{64}; }},
    {"kvrsCalcStates.*", "survivors|curError", [](S s) { return std::min<int64_t>(s["numStates"], 256); }},
    {"kvrsCalcStates.*", ".*", [](S s) { return s["numStates"]; }},
    {"kvrsUpdatePath.*", "metrics|dstMetrics", pathMetrics},
    {"kvrsUpdatePath.*", ".*", one},

    {"kvrsWTHaar.*", "(src|dst)Low", [](S s) { return (len(s) + 1) / 2; }},
    {"kvrsWTHaar.*", "(src|dst)High", [](S s) { return len(s) / 2; }},
    {"kvrsWTFwd_.*", "src", [](S s) { return 2 * s["dstLen"]; }},
    {"kvrsWTFwd_.*", "dst.*", [](S s) { return s["dstLen"]; }},
    {"kvrsWTInv_.*", "src.*", [](S s) { return s["srcLen"]; }},
    {"kvrsWTInv_.*", "dst", [](S s) { return 2 * s["srcLen"]; }},
    {"kvrsWT.*", "tapsLow", [](S s) { return s["lenLow"]; }},
    {"kvrsWT.*", "tapsHigh", [](S s) { return s["lenHigh"]; }},
    {"kvrsWT.*", "dlyLow", [](S s) { return waveletLine(s, "lenLow", "offsLow"); }},
    {"kvrsWT.*", "dlyHigh", [](S s) { return waveletLine(s, "lenHigh", "offsHigh"); }},

    {"kvrs(FFT|DFT|DCT).*", "specSize|initBufSize|workSize|size", one},
    {"kvrs(FFT|DFT|DCT)(OutOrd)?(Fwd|Inv)(_.*)", "buffer", [](S s) { return s.workSize(); }},
    {"kvrs(FFT|DCT(Fwd|Inv))Init_.*", "specMem", [](S s) { return s.recordSize("specSize"); }},
    {"kvrs(FFT|DCT(Fwd|Inv))Init_.*", "initBuf", [](S s) { return s.recordSize("initBufSize"); }},
    {"kvrs(FFT|DFT)Fwd_RToCCS_.*", "dst|srcDst", ccs},
    {"kvrs(FFT|DFT)Inv_CCSToR_.*", "src|srcDst", ccs},
    {"kvrs(FFT|DFT|DFTOutOrd|DCT)(Fwd|Inv)_.*|kvrsHilbert_.*", "(src|dst|srcDst)(Re|Im)?", points},

    {"kvrs(Tone|Triangle|Rand(Uniform|Gauss))Init(Q15)?_16s", "state",
     [](S s) { return s.recordSize("size"); }, true},

    {"kvrsFIRLMSMR.*", "taps", [](S s) { return s["tapsLen"]; }},
    {"kvrsFIRLMSMR.*", "dlyLine", ring},
    {"kvrsFIRLMSMR.*", "dst", one},
    {"kvrsFIRLMSOne.*", "dst", one},
    {"kvrsFIRLMSOne.*", "dlyLine", [](S s) { return 2 * s["tapsLen"]; }},
    {"kvrsFIRLMS.*", "dlyLine", [](S s) { return s["tapsLen"]; }},
    {"kvrsFIROne.*Direct.*", "dlyLine", [](S s) { return 2 * s["tapsLen"]; }},
    {"kvrsFIROne.*", "dst|srcDst", one},
    {"kvrsFIRMR.*Direct.*", "dlyLine", delayLine},
    {"kvrsFIR(32|64)?.*_Direct_.*", "dlyLine",
     [](S s) { return s.isNamed("FIRMR") ? delayLine(s) : 2 * s["tapsLen"]; }},
    {"kvrsFIRSparse.*", "nzTaps|nzTapsPos", [](S s) { return s["nzTapsLen"]; }},
    {"kvrsIIRSparse.*", "nzTaps|nzTapsPos",
     [](S s) { return std::max<int64_t>(s["nzTapsLen1"], 0) + std::max<int64_t>(s["nzTapsLen2"], 0); }},
    {"kvrsFIRSparseInit.*", "dlyLine", [](S s) { return lastPosition(s, s["nzTapsLen"]); }},
    {"kvrsIIRSparseInit.*", "dlyLine",
     [](S s) {
       return lastPosition(s, s["nzTapsLen1"]) + lastPosition(s, s["nzTapsLen1"] + s["nzTapsLen2"]);
     }},
    {"kvrs(FIR|IIR)Sparse_.*", "src|dst", len},
    {"kvrs(FIR|IIR).*Init(32|64|_).*", "buffer", [](S s) { return s.recordSize("size"); }},
    {"kvrsFIRGen.*", "taps", [](S s) { return s["tapsLen"]; }},
    {"kvrsFIR.*", "dlyLine", delayLine},
    {"kvrsFIR.*", "taps", [](S s) { return s["tapsLen"]; }},
    {"kvrsFIR.*", "dlyLineIndex|tapsFactor|size|tapsPointer", one},
    {"kvrsFIRLMS.*", "src|ref|dst", len},
    {"kvrsFIR.*", "src", firInputs},
    {"kvrsFIR.*", "dst", firOutputs},
    {"kvrsFIR.*", "srcDst", firBoth},

    {"kvrsIIRGen.*", "taps", [](S s) { return 2 * (s["order"] + 1); }},
    {"kvrsIIROne.*", "dst|srcDst", one},
    {"kvrsIIR.*", "taps", iirTaps},
    {"kvrsIIR.*", "dlyLine", iirDelayLine},
    {"kvrsIIR64f_32s_I?PSfs", "scaleFactor", [](S s) { return s["nChannels"]; }},

    {".*",
     "dp|norm|sum|mean|stdDev|min|max|(min|max)?[iI]ndx|order|counts|valZC|size|dstLen|phase|seed|dlyPoint",
     one},
    {".*", ".*", len},
};

// --- numbers -----------------------------------------------------------------------------------------------------

constexpr int kLong = 3000;

int shortLength(Choices& c) {
  switch (c.below(8)) {
    case 0:
    case 1:
      return c.between(1, 20);
    case 2:
    case 3:
      return std::max(1, (1 << c.between(2, 10)) * c.between(1, 3) / 2 + c.between(-2, 2));
    case 4:
      return c.between(1, kLong);
    default:
      return c.between(1, 300);
  }
}
double shortLengthOf(Choices& c, S) {
  return shortLength(c);
}
// Now and then beyond what the loops take for near, and beyond the shortest of the thresholds of threads.
double length(Choices& c, S) {
  if (!c.oneIn(48)) return shortLength(c);
  return c.oneIn(4) ? c.between(100000, 300000) : c.between(kLong, 40000);
}
double fewTaps(Choices& c, S) {
  switch (c.below(6)) {
    case 0:
      return c.between(1, 4);
    case 1:
      return c.between(1, 300);
    default:
      return c.between(1, 48);
  }
}
double fraction(Choices& c, double low, double high) {
  return low + (high - low) * (c.below(1u << 16) / 65536.0);
}
double flag(Choices& c, S) {
  return 1 << c.below(4);
}
double anything(Choices& c, S) {
  static const int kExtremes[] = {0, 1, -1, 2, 3, INT32_MIN, INT32_MAX, 31, 32, -32, 64};
  return c.oneIn(2) ? c.pick(kExtremes) : static_cast<int32_t>(c.word());
}
// Above 0, in the range of a type of 8 bits and more.
double positive(Choices& c, S s) {
  const bool isFloat =
      strstr(s.function->name, "32f") != nullptr || strstr(s.function->name, "64f") != nullptr;
  return isFloat ? fraction(c, 0.001, 1000) : c.between(1, 127);
}

const Number kNumbers[] = {
    {"kvrs(FIR|IIR).*", "scaleFactor", [](Choices& c, S) { return double(c.between(-6, 16)); }},
    {".*", "(mag|phase)?[sS]caleFactor",
     [](Choices& c, S s) {
       return c.oneIn(3) ? 0.0 : c.oneIn(8) ? anything(c, s) : double(c.between(-36, 36));
     }},
    {".*", "tapsFactor", [](Choices& c, S) { return double(c.between(-4, 8)); }},
    {"kvrsFFT.*", "order",
     [](Choices& c, S) { return double(c.oneIn(16) ? c.between(0, 15) : c.between(0, 10)); }},
    {"kvrsIIRGen.*", "order", [](Choices& c, S) { return double(c.between(1, 12)); }},
    {"kvrsFIRSparseGetStateSize.*", "order", [](Choices& c, S) { return double(c.between(1, 500)); }},
    {".*", "order", [](Choices& c, S) { return double(c.oneIn(8) ? c.between(1, 40) : c.between(1, 8)); }},
    {".*", "order[12]", [](Choices& c, S) { return double(c.between(0, 500)); }},
    {".*", "numBq", [](Choices& c, S) { return double(c.oneIn(8) ? c.between(1, 20) : c.between(1, 4)); }},
    {"kvrsZeroCrossing.*", "flag", [](Choices& c, S) { return double(c.below(3)); }},
    {".*", "flag", flag},
    {".*", "hint", [](Choices& c, S s) { return c.oneIn(8) ? anything(c, s) : double(c.below(3)); }},
    {"kvrsConvert_(32f16f|16s16f|16f16s_Sfs)", "rndMode", [](Choices& c, S) { return double(c.below(2)); }},
    {".*", "rndMode", [](Choices& c, S) { return double(c.below(3)); }},
    {".*", "relOp", [](Choices& c, S) { return double(c.oneIn(2) ? kvrCmpLess : kvrCmpGreater); }},
    {".*", "winType|filterType", [](Choices& c, S) { return double(c.below(5)); }},
    {"kvrsIIRGen.*", "passDevDb", [](Choices& c, S) { return fraction(c, 0.001, 29); }},

    {"kvrsFIRGen.*", "tapsLen", [](Choices& c, S) { return double(c.between(5, 300)); }},
    {".*", "tapsLen", fewTaps},
    {".*", "upFactor|downFactor", [](Choices& c, S) { return double(c.between(1, 7)); }},
    {".*", "upPhase", [](Choices& c, S s) { return double(c.below(static_cast<uint32_t>(up(s)))); }},
    {".*", "downPhase", [](Choices& c, S s) { return double(c.below(static_cast<uint32_t>(down(s)))); }},
    {".*", "numIters", [](Choices& c, S) { return double(shortLength(c)); }},
    {"kvrsSample.*", "factor", [](Choices& c, S) { return double(c.between(1, 9)); }},
    {"kvrsSample.*", "phase",
     [](Choices& c, S s) { return double(c.below(static_cast<uint32_t>(s["factor"]))); }},
    {".*", "dlyStep", [](Choices& c, S) { return double(c.between(1, 5)); }},
    {".*", "updateDly", [](Choices& c, S) { return double(c.between(0, 9)); }},
    {"kvrsFIRLMSMRInit.*", "dlyLineIndex",
     [](Choices& c, S s) {
       // dlyStep and updateDly come behind it: the shortest ring that there can be.
       return double(c.below(static_cast<uint32_t>(s["tapsLen"])));
     }},
    {"kvrsFIRLMS(MR)?Set.*|kvrsFIRLMSInit.*", "dlyLineIndex",
     [](Choices& c, S s) {
       return c.oneIn(2) ? anything(c, s) : double(c.below(static_cast<uint32_t>(s["tapsLen"])));
     }},
    {".*", "dlyLineIndex",
     [](Choices& c, S s) { return double(c.below(static_cast<uint32_t>(s["tapsLen"]))); }},
    {".*", "index", [](Choices& c, S s) { return double(c.below(static_cast<uint32_t>(ring(s) + 1))); }},
    {"kvrsFIRLMSMR.*", "mu|err|errRe|errIm", anything},
    {".*", "mu", [](Choices& c, S) { return fraction(c, 0, 0.01); }},
    {".*", "nzTapsLen[12]?", [](Choices& c, S) { return double(c.between(1, 12)); }},

    {"kvrs(FFT|DFT|DCT|Hilbert).*", "len",
     [](Choices& c, S) { return double(c.oneIn(24) ? c.between(kLong, 20000) : shortLength(c)); }},
    {"kvrs(Mean)?StdDev_.*", "len", [](Choices& c, S s) { return std::max(2.0, length(c, s)); }},
    {"kvrsWin.*", "len", [](Choices& c, S s) { return std::max(4.0, length(c, s)); }},
    {".*", "len", length},
    {".*", "len1|len2|srcLen|dstLen", shortLengthOf},
    {".*", "lenLow|lenHigh", [](Choices& c, S) { return double(c.between(1, 24)); }},
    {".*", "offsLow|offsHigh", [](Choices& c, S) { return double(c.between(-1, 12)); }},
    {".*", "bias|lowLag",
     [](Choices& c, S s) { return c.oneIn(16) ? anything(c, s) : double(c.between(-400, 400)); }},
    {".*", "nChannels", [](Choices& c, S) { return double(c.between(1, 8)); }},
    {".*", "chanLen", shortLengthOf},
    {".*", "maskSize",
     [](Choices& c, S) { return double(c.oneIn(8) ? c.between(1, 700) : c.between(1, 40)); }},
    {".*", "tableLen", [](Choices& c, S) { return double(shortLength(c)); }},
    {".*", "srcBitOffset|dstBitOffset", [](Choices& c, S) { return double(c.between(0, 130)); }},
    {"kvrsSortRadixIndex.*", "srcStrideBytes",
     [](Choices& c, S s) { return double(keyBytes(*s.function) + (c.oneIn(2) ? 0 : c.between(0, 13))); }},
    {"kvrsCalcStates.*", "numStates", [](Choices& c, S) { return double(c.between(1, 300)); }},
    {".*", "numStates", [](Choices& c, S) { return double(16 << c.below(3)); }},
    {"kvrsCalcStates.*", "offset", [](Choices& c, S) { return double(c.between(-1000, 1000)); }},

    {"kvrs(Tone|Triangle).*|kvrsVectorJaehne.*", "magn", positive},
    {"kvrs(Tone|Triangle)_Direct.*", "rFreq", [](Choices& c, S) { return fraction(c, 0, 0.499); }},
    {"kvrs(Tone|Triangle)_Direct.*", "phase", [](Choices& c, S) { return fraction(c, 0, 6.28); }},
    {".*", "rFreqQ15", [](Choices& c, S) { return double(c.below(16384)); }},
    {".*", "phaseQ15", [](Choices& c, S) { return double(c.below(205887)); }},
    {".*", "asymQ15", [](Choices& c, S) { return double(c.between(-102943, 102943)); }},
    {".*", "asym", [](Choices& c, S) { return fraction(c, -3.14, 3.14); }},
    {"kvrsIIRGen.*|kvrsFIRGen.*", "rFreq", [](Choices& c, S) { return fraction(c, 0.001, 0.499); }},
    {".*", "rLowFreq", [](Choices& c, S) { return fraction(c, 0.001, 0.25); }},
    {".*", "rHighFreq", [](Choices& c, S) { return fraction(c, 0.2505, 0.499); }},
    {".*", "relFreq", [](Choices& c, S) { return fraction(c, 0, 1); }},
    {".*", "relFreqQ15", [](Choices& c, S) { return double(c.below(32768)); }},
    {".*", "seed", [](Choices& c, S) { return double(c.word()); }},

    // Kaiser windows overflow where |alpha| (len - 1) / 2 is beyond 38 or 308; with more than 2^15 the Q15 forms do.
    {"kvrsWinKaiserQ15.*", "alphaQ15",
     [](Choices& c, S s) {
       return std::floor(fraction(c, -1, 1) * 70 * 32768.0 / static_cast<double>(len(s)));
     }},
    {"kvrsWinKaiser_.*", "alpha",
     [](Choices& c, S s) { return fraction(c, -1, 1) * 70 / static_cast<double>(len(s)); }},
    {".*", "alphaQ15", [](Choices& c, S) { return double(c.between(-65536, 65536)); }},
    {"kvrsUpdate.*", "alpha",
     [](Choices& c, S) { return double(c.oneIn(2) ? c.between(-1, 1) : c.between(-32768, 32767)); }},
    {"kvrsCauchy.*", "param", [](Choices& c, S) { return fraction(c, 0.001, 100); }},
    {"kvrsThreshold_(GTAbs|LTAbs|LTInv).*|kvrsThreshold.*(16sc|32fc|64fc).*", "level",
     [](Choices& c, S s) {
       const bool isInteger =
           strstr(s.function->name, "16s") != nullptr || strstr(s.function->name, "32s") != nullptr;
       return c.oneIn(4) ? 0 : isInteger ? double(c.between(0, 32767)) : fraction(c, 0, 2);
     }},
    {".*", "levelLT", [](Choices& c, S) { return double(c.between(-100, 0)); }},
    {".*", "levelGT", [](Choices& c, S) { return double(c.between(0, 100)); }},
    {"kvrs[LR]ShiftC_.*", "val", [](Choices& c, S) { return double(c.between(0, 40)); }},
    {"kvrsDivC_.*", "val", [](Choices& c, S) { return double(c.between(1, 127)); }},
    {"kvrsNormalize.*", "vDiv",
     [](Choices& c, S) { return double(c.between(1, 30)) * (c.oneIn(2) ? 1 : -1); }},
    {".*", "mask|doNormal|srcShiftRight|lowerBound|upperBound", anything},
};

// --- contents ----------------------------------------------------------------------------------------------------

template <class T>
void put(std::span<uint8_t> memory, int64_t i, T value) {
  if (i >= 0 && i < static_cast<int64_t>(memory.size() / sizeof value)) {
    memcpy(memory.data() + static_cast<size_t>(i) * sizeof value, &value, sizeof value);
  }
}
// Writes a number, or the real part of one, as an element of the parameter's type.
void putNumber(S s, const char* parameter, std::span<uint8_t> memory, int64_t i, double number) {
  const char* const type = s.function->parameters[s.function->find(parameter)].type;
  const size_t bytes = bytesOf(type);
  if (i < 0 || static_cast<size_t>(i + 1) * bytes > memory.size()) return;
  const double element[] = {number, 0};
  writeElements(type, {element, size_t{type[strlen(type) - 1] == 'c' ? 2u : 1u}},
                memory.subspan(static_cast<size_t>(i) * bytes, bytes));
}

// Feedback that dies away, at least in most filters, and no division by zero.
void adaptIirTaps(Choices& c, S s, std::span<uint8_t> memory) {
  const bool isCascade = s.has("numBq");
  const int64_t sections = isCascade ? s["numBq"] : 1, order = isCascade ? 2 : s["order"];
  const bool isStable = !c.oneIn(8);
  for (int64_t i = 0; i < sections; ++i) {
    const int64_t begin = i * 6, a0 = begin + order + 1;
    putNumber(s, "taps", memory, begin, c.between(1, 100));
    putNumber(s, "taps", memory, a0, c.between(1, 100));
    for (int64_t k = 1; isStable && k <= order; ++k) putNumber(s, "taps", memory, a0 + k, k == 1 ? -0.5 : 0);
    if (!isCascade) break;
  }
}
void adaptShifts(Choices& c, S s, std::span<uint8_t> memory) {
  const bool isCascade = s.has("numBq");
  const int64_t sections = isCascade ? s["numBq"] : 1, order = isCascade ? 2 : s["order"];
  for (int64_t i = 0; i < sections; ++i) putNumber(s, "taps", memory, i * 6 + order + 1, c.between(0, 14));
}
// Ascending strictly, in one list or two.
void adaptPositions(Choices& c, S s, std::span<uint8_t> memory) {
  const bool isFir = s.has("nzTapsLen");
  const int64_t first = isFir ? s["nzTapsLen"] : s["nzTapsLen1"];
  const int64_t all = isFir ? first : first + s["nzTapsLen2"];
  int position = c.between(0, 20);
  for (int64_t i = 0; i < all; ++i) {
    if (i == first) position = c.between(1, 20);
    put<int32_t>(memory, i, position);
    position += c.between(1, c.oneIn(4) ? 200 : 10);
  }
}
template <class T, int kLow, int kHigh>
void adaptRange(Choices& c, S, std::span<uint8_t> memory) {
  uint32_t word = c.word();
  for (size_t i = 0; i < memory.size() / sizeof(T); ++i) {
    word = word * 1664525 + 1013904223;
    put<T>(memory, static_cast<int64_t>(i),
           static_cast<T>(kLow + static_cast<int>((word >> 16) % (kHigh - kLow + 1))));
  }
}
void adaptTable(Choices&, S, std::span<uint8_t> memory) {
  std::vector<uint16_t> table(memory.size() / 2);
  if (table.empty()) return;
  memcpy(table.data(), memory.data(), table.size() * 2);
  std::sort(table.begin(), table.end());
  memcpy(memory.data(), table.data(), table.size() * 2);
}
void adaptFrequencies(Choices& c, S s, std::span<uint8_t> memory) {
  for (int i = 0; i < 2; ++i) putNumber(s, "relFreq", memory, i, fraction(c, 0, 0.999));
}

const Contents kContents[] = {
    {"kvrsPackBits_.*", "srcBitsLen", adaptRange<int32_t, -3, 36>},
    {"kvrs(FIR|IIR)SparseInit.*", "nzTapsPos", adaptPositions},
    {"kvrsFindNearest.*", "table", adaptTable},
    {"kvrsGoertzTwo_.*", "relFreq", adaptFrequencies},
    {"kvrsGoertzTwoQ15.*", "relFreqQ15", adaptRange<int16_t, 0, 32767>},
    {"kvrsIIR(One)?_(BiQuad)?Direct_16s(_I)?", "taps", adaptShifts},
    {"kvrsIIR(Init|InitAlloc|SetTaps).*", "taps", adaptIirTaps},
    {"kvrsIIR64f_32s_I?PSfs", "scaleFactor", adaptRange<int32_t, -6, 16>},
};

const Displacement kDisplacements[] = {
    {"kvrsConvBiased_.*", "src2", [](S s) { return s["bias"]; }},
    {"kvrsCalcStates.*", "survivors", [](S s) { return -s["offset"]; }},
};

// Arrays of results of which a call may leave some bytes as they are are not among these.
const Name kReadToo[] = {
    {".*", "srcDst(Re|Im)?|phase|seed|dlyPoint|curError|metrics"},
    {"kvrsFIR(LMS)?(One)?(MR)?(32|64|_).*Direct.*", "dlyLine|dlyLineIndex|taps"},
    {"kvrsIIR.*Direct.*", "dlyLine"},
    {"kvrs(Copy_1u|PackBits_.*)", "dst"},
};
const Name kScratch[] = {
    {"kvrs(FFT|DFT|DCT|Sort).*", "buffer|initBuf|tmpIndx"},
};

template <class Row, size_t n>
const Row* find(const Row (&rows)[n], const Function& f, const Parameter& p) {
  for (const Row& row : rows) {
    if (matches(row.parameter, p.name) && matches(row.functions, f.name)) return &row;
  }
  return nullptr;
}

// Runs a size query with the numbers of a call.
int64_t query(S s, const std::string& name, const char* output) {
  const auto all = functions();
  const auto q = std::lower_bound(all.begin(), all.end(), name, [](const Function& f, const std::string& n) {
    return strcmp(f.name, n.c_str()) < 0;
  });
  if (q == all.end() || name != q->name) {
    fprintf(stderr, "%s: there is no %s\n", s.function->name, name.c_str());
    exit(1);
  }
  int32_t results[16] = {};
  Values values;
  int wanted = -1;
  for (int i = 0; i < q->parameterCount; ++i) {
    const Parameter& p = q->parameters[i];
    if (p.kind == Kind::output) {
      values.at[i].pointer = &results[i];
      if (strcmp(p.name, output) == 0) wanted = i;
    } else if (p.kind == Kind::context) {
      for (int k = 0; k < s.function->parameterCount; ++k) {
        if (s.function->parameters[k].kind == Kind::context) values.at[i].pointer = s.values->at[k].pointer;
      }
    } else if (strncmp(p.name, "order", 5) == 0 && s.isNamed("Sparse")) {
      const int64_t first = s.has("nzTapsLen") ? s["nzTapsLen"] : s["nzTapsLen1"];
      const int64_t position =
          lastPosition(s, strcmp(p.name, "order2") == 0 ? first + s["nzTapsLen2"] : first);
      values.at[i].number =
          static_cast<double>(s.has("nzTapsLen") ? std::max<int64_t>(position, 1) : position);
    } else {
      values.at[i].number = static_cast<double>(s[p.name]);
      // An Init that is given a wrong flag may have begun to write the memory that a right one needs.
      if (strcmp(p.name, "flag") == 0) values.at[i].number = kvrFftNoDivByAny;
    }
  }
  const KvrStatus status = q->call(values);
  return status < kvrStatusOk || wanted < 0 ? 0 : results[wanted];
}

}  // namespace

bool Scope::has(const char* name) const {
  return function->find(name) >= 0 || (maker != nullptr && maker->find(name) >= 0);
}

int64_t Scope::operator[](const char* name) const {
  int i = function->find(name);
  const Values* from = values;
  if (i < 0 && maker != nullptr) {
    i = maker->find(name);
    from = made;
  }
  return i < 0 ? 1 : static_cast<int64_t>(from->at[i].number);
}

bool Scope::isNamed(const char* word) const {
  return strstr(function->name, word) != nullptr;
}
bool Scope::isMadeBy(const char* word) const {
  return maker != nullptr && strstr(maker->name, word) != nullptr;
}

std::span<const uint8_t> Scope::contents(const char* parameter) const {
  const int i = function->find(parameter);
  return i < 0 ? std::span<const uint8_t>() : memory[i];
}

int64_t Scope::recordSize(const char* output) const {
  std::string name = function->name;
  const bool hasStateSize =
      name.find("FFT") == name.npos && name.find("DCT") == name.npos && name.find("Rand") == name.npos;
  name.replace(name.find("Init"), 4, hasStateSize ? "GetStateSize" : "GetSize");
  return query(*this, name, output);
}

int64_t Scope::workSize() const {
  const auto all = function->all();
  const auto spec =
      std::find_if(all.begin(), all.end(), [](const Parameter& p) { return p.kind == Kind::context; });
  if (values->at[spec - all.begin()].pointer == nullptr) return 0;
  std::string name = spec->type;
  name[0] = 'k';
  name.replace(name.find("Spec"), 4, "GetBufSize");
  return query(*this, name, "size");
}

const Extent* extentOf(const Function& f, const Parameter& p) {
  return find(kExtents, f, p);
}
const Number* numberOf(const Function& f, const Parameter& p) {
  return find(kNumbers, f, p);
}
const Contents* contentsOf(const Function& f, const Parameter& p) {
  return find(kContents, f, p);
}
const Displacement* displacementOf(const Function& f, const Parameter& p) {
  return find(kDisplacements, f, p);
}
bool isReadToo(const Function& f, const Parameter& p) {
  return find(kReadToo, f, p) != nullptr;
}
bool isScratch(const Function& f, const Parameter& p) {
  return find(kScratch, f, p) != nullptr;
}

size_t bytesOf(const char* type) {
  if (strncmp(type, "Kvr", 3) != 0) return 4;  // int
  if (type[3] == 's') return 1;                // KvrsFIRState_32f
  const size_t bits = strtoul(type + 3, nullptr, 10);
  if (bits == 0) return 4;  // KvrRoundMode
  return bits / 8 * (type[strlen(type) - 1] == 'c' ? 2 : 1);
}

}  // namespace kvrs::test
