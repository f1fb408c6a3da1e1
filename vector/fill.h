// The kernel of Set and Zero.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_FILL_H
#define KVRS_VECTOR_FILL_H

#include "frame/check.h"
#include "frame/loop.h"

namespace kvrs {

template <class Word>
struct Fill {
  Word val;
  template <class D>
  KVRS_INLINE auto operator()(D d) const {
    return hn::Set(d, val);
  }
};

template <class Part>
struct Fill<Pair<Part>> {
  Pair<Part> val;
  template <class D>
  KVRS_INLINE auto operator()(D d) const {
    return hn::OddEven(hn::Set(d, val.im), hn::Set(d, val.re));
  }
};

// dst[i] = val for elements of Word's width.
template <class Word, class T>
KvrStatus fillVector(Word val, T* dst, int len) {
  static_assert(sizeof(Word) == sizeof(T));
  KVRS_CHECK(pointers(dst), length(len));
  return mapElements(Fill<Word>{val}, reinterpret_cast<Word*>(dst), static_cast<size_t>(len));
}

}  // namespace kvrs

#endif
