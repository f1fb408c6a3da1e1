#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes include/kvrs/status_text.h from the list of statuses in include/kvrs/types.h; --check only compares."""
import argparse
import re
import sys
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent
TYPES = TOP / "include/kvrs/types.h"
TARGET = TOP / "include/kvrs/status_text.h"

HEAD = '''/* What a status says, in words.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_STATUS_TEXT_H
#define KVRS_STATUS_TEXT_H

#include "kvrs/types.h"

/** @defgroup status_text Statuses in words
 * @{
 */

/** The meaning of a status in a few words: "an allocation failed" for ::kvrStatusOutOfMemory, "unknown status" for a
 * number that is none. The text is a constant and needs no release. Inline, so that the library has no texts, only
 * programs that ask for them. Made from the list in types.h by tools/make_status_text.py. */
static inline const char* kvrsStatusText(KvrStatus status) {
  switch (status) {
    case kvrStatusOk:
      return "success";
'''
TAIL = '''    default:
      return "unknown status";
  }
}

/** @} */

#endif
'''


def statuses():
    """Name and meaning of each status but kvrStatusOk."""
    return re.findall(r"^  (kvrStatus\w+) = -?\d+,?\s+/\*\*< (.+?) \*/$", TYPES.read_text(), re.M)


def text():
    cases = "".join(f'    case {name}:\n      return "{meaning}";\n' for name, meaning in statuses())
    return HEAD + cases + TAIL


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--check", action="store_true", help="fail if the header is not up to date")
    if not parser.parse_args().check:
        TARGET.write_text(text())
    elif TARGET.read_text() != text():
        sys.exit(f"{TARGET.relative_to(TOP)} is not up to date: call tools/make_status_text.py")


if __name__ == "__main__":
    main()
