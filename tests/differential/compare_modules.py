#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares what the modules return and store for the same calls (outputs.cpp).

usage: compare_modules.py MODULE=PROGRAM=LIBRARY_DIRECTORY ...

The first module is the reference. Statuses, sizes and results must be the same bytes; results of the functions in
ORDER_FREE, whose sums or estimates may take another order in each module, must agree within the given distance,
relative to the largest magnitude of the array. The name of a call ends in its numbers, such as "order:12:0" or
"threads:3:209792".
"""
import math
import os
import re
import struct
import subprocess
import sys
from pathlib import Path

# Pattern on the function's name -> largest difference in units of the type's epsilon.
ORDER_FREE = [
    (r"kvrs((FFT|DFT|DFTOutOrd|DCT)(Fwd|Inv)|Hilbert)_.*", 8),
    (r"kvrs(DotProd|Norm|NormDiff|Sum|Mean|StdDev|MeanStdDev)_.*(32|64)fc?.*", 16),
    (r"kvrsFIR(MR)?(One)?(_Direct)?(32f|64f)?c?_.*(32|64)f.*", 16),
    (r"kvrs(Conv|ConvBiased|ConvCyclic[48]x[48]|CrossCorr|AutoCorr(_Norm[AB])?)_(32|64)f.*", 16),
    (r"kvrsIIR(_BiQuad(_DF1)?)?(32f|64f)?c?_.*(32|64)f.*", 64),  # look-ahead, by as many outputs as a vector holds
    # Sums of FIR, in which an error makes the next taps; steps that converge let it die away.
    (r"kvrsFIRLMS(One_Direct)?(_32f|32f_16s)", 16),
    (r"kvrs(Phase|CartToPolar|PolarToCart)_.*(32|64)fc?", 4),  # both within 2 units, where the module fuses or not
    (r"kvrsGoertz(Two)?_64fc?", 256),  # the cosine, fused or not; its last bit counts once a sample
    (r"kvrsVectorJaehne_(32|64)f", 4),  # the sine, fused or not
    # Fused or not; the exponential and the square root of singles work from estimates.
    (r"kvrs(Arctan|Cauchy|Cubrt|Exp|Ln|Sqrt|SumLn)_.*(32|64)fc?(_I)?", 8),
    # A sum may end on either side of an integer's boundary, see INTEGERS.
]
# Transforms, sums and scaled logarithms of integers by way of floats, and adaptive filters: a result may be the next
# integer.
ROUNDED = (r"kvrs((FFT|DFT|DCT)(Fwd|Inv)|Hilbert|Conv|CrossCorr|AutoCorr(_Norm[AB])?)_.*(16|32)sc?.*"
           r"|kvrsFIR(MR)?32fc?_16sc?_I?Sfs|kvrsFIRLMS(One_Direct)?32f_16s"
           r"|kvrs(10Log10|Ln)_(16|32)s.*")
# Sums of so many terms of both signs are some sqrt(n) large, and their errors up to n / 8 units: the distances grow.
LONG_SUMS = r"kvrs(DotProd|Norm|NormDiff|Sum|Mean|StdDev|MeanStdDev|FIR(MR)?(One)?)(_|32|64).*"
# Each module leaves long spectra in an order of its own.
OWN_ORDER = r"kvrsDFTOutOrd(Fwd|Inv)_.*"
LONGEST_IN_ORDER = 2000
INTEGERS = {"Kvr16s": "h", "Kvr16sc": "h", "Kvr32s": "i", "Kvr32sc": "i"}
FORMATS = {"Kvr32f": ("f", 2.0**-23), "Kvr32fc": ("f", 2.0**-23), "Kvr64f": ("d", 2.0**-52), "Kvr64fc": ("d", 2.0**-52)}
SKIPPED = 77


def outputs(program, directory):
    environment = dict(os.environ, LD_LIBRARY_PATH=directory)
    done = subprocess.run([program], env=environment, stdout=subprocess.PIPE, text=True)
    if done.returncode:
        sys.exit(f"{program} on {directory} ended with {done.returncode}")
    calls, current = {}, None
    for line in done.stdout.splitlines():
        words = line.split()
        if line.startswith("  "):
            calls[current][1][words[0]] = (words[1], bytes.fromhex(words[2]))
        else:
            current = tuple(words[:3])
            calls[current] = (words[3], {})
    return calls


def distance(kind, a, b):
    """The largest difference of two arrays in units of epsilon times their largest magnitude; None: no comparison."""
    letter, epsilon = FORMATS[kind]
    count = len(a) // struct.calcsize(letter)
    x, y = struct.unpack(f"{count}{letter}", a), struct.unpack(f"{count}{letter}", b)
    top = max((abs(v) for v in x if math.isfinite(v)), default=0)
    worst = 0.0
    for p, q in zip(x, y):
        if p == q or (math.isnan(p) and math.isnan(q)):
            continue
        if not (math.isfinite(p) and math.isfinite(q)):
            return None
        worst = max(worst, abs(p - q) / (epsilon * top))
    return worst


def terms(call):
    """How many terms a result of the call is the sum of, where its name tells."""
    numbers = dict(zip(call[2].split(":")[::2], call[2].split(":")[1::2]))
    if "threads" in numbers:
        return int(call[2].split(":")[2])
    order = int(numbers.get("order", 0))
    return 1 << order if order else int(numbers.get("len", numbers.get("tapsLen", 1)))


def compare(name, reference, other):
    bad = []
    if reference.keys() != other.keys():
        return [f"{name}: other calls than the reference"]
    for call, (status, arrays) in reference.items():
        if other[call][0] != status:
            bad.append(f"{name}: {' '.join(call)}: status {other[call][0]} instead of {status}")
        n = terms(call)
        if re.fullmatch(OWN_ORDER, call[0]) and n > LONGEST_IN_ORDER:
            continue
        for array, (kind, data) in arrays.items():
            got = other[call][1][array][1]
            if got == data:
                continue
            limit = next((limit for pattern, limit in ORDER_FREE if re.fullmatch(pattern, call[0])), None)
            if limit is not None and re.fullmatch(LONG_SUMS, call[0]):
                limit *= max(1, math.sqrt(n) / 8)
            if limit is not None and kind in FORMATS:
                d = distance(kind, data, got)
                if d is not None and d <= limit:
                    continue
                bad.append(f"{name}: {' '.join(call)}: {array} is {d} units away")
            elif re.fullmatch(ROUNDED, call[0]) and kind in INTEGERS and is_near(INTEGERS[kind], data, got, n):
                continue
            else:
                first = next(i for i in range(len(data)) if data[i] != got[i])
                bad.append(f"{name}: {' '.join(call)}: {array} differs from byte {first} on")
    return bad


def is_near(letter, a, b, n):
    """Whether all integers are equal or differ by one, and by more in long transforms: sums of n numbers of 16 bits,
    times 4 by the scale factor of these calls, are some 2^17 sqrt(n) large, and singles of that size 2^-7 sqrt(n)
    apart."""
    layout, most = f"<{len(a) // struct.calcsize(letter)}{letter}", 1 + math.sqrt(n) / 16
    return all(abs(x - y) <= most for x, y in zip(struct.unpack(layout, a), struct.unpack(layout, b)))


def is_runnable(module):
    """Whether this processor can run a module."""
    needs = {"v3": "avx2", "v4": "avx512vl"}.get(module)
    return needs is None or needs in Path("/proc/cpuinfo").read_text()


def main():
    runs = [argument.split("=") for argument in sys.argv[1:]]
    runnable = []
    for module, program, directory in runs:
        if not is_runnable(module):
            print(f"{module}: skipped, this processor cannot run it")
        else:
            runnable.append((module, outputs(program, directory)))
    if len(runnable) < 2:
        sys.exit(SKIPPED)
    reference_name, reference = runnable[0]
    bad = []
    for module, other in runnable[1:]:
        found = compare(f"{module} against {reference_name}", reference, other)
        print(f"{module} against {reference_name}: {len(reference)} calls, {len(found)} differences")
        bad += found
    if bad:
        sys.exit("\n".join(bad[:50]))


if __name__ == "__main__":
    main()
