// Pairs of signed bytes as elements (frame/element.h), for transforms that take a signal apart into its even and odd samples.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_BYTE_PAIRS_H
#define KVRS_TRANSFORMS_BYTE_PAIRS_H

#include "frame/element.h"

namespace kvrs {

template <>
struct Element<Kvr8sc> : ComplexElement<Kvr8sc, Kvr8s> {};

}  // namespace kvrs

#endif
