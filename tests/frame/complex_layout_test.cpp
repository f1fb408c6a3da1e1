// C++'s complex numbers in place of complex elements. (C's: examples/snippets/complex_parts.c.)
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <complex>
#include <vector>

#include "kvrs/complex_parts.h"

namespace {

template <class Complex, class Element>
void conjugates(KvrStatus (*conj)(Element*, int) noexcept) {
  static_assert(sizeof(Complex) == sizeof(Element));
  for (int len = 1; len <= 40; len++) {
    std::vector<Complex> z(static_cast<size_t>(len));
    for (int i = 0; i < len; i++) z[static_cast<size_t>(i)] = Complex(i + 1, 2 * i - 5);
    ASSERT_EQ(conj(reinterpret_cast<Element*>(z.data()), len), kvrStatusOk);
    for (int i = 0; i < len; i++)
      EXPECT_EQ(z[static_cast<size_t>(i)], Complex(i + 1, 5 - 2 * i)) << i << " of " << len;
  }
}

TEST(ComplexLayout, StdComplexStandsFor32fc) {
  conjugates<std::complex<float>>(kvrsConj_32fc_I);
}

TEST(ComplexLayout, StdComplexStandsFor64fc) {
  conjugates<std::complex<double>>(kvrsConj_64fc_I);
}

}  // namespace
