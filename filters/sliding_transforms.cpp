// Sliding sums by discrete Fourier transforms. With the taps reversed they are a convolution, of which outputs lo, lo + 1 ...
// are wanted:
//
//   out[n] = y[lo + n],  y[i] = sum over k of tap[tapsLen-1-k] * in[i - k],  lo = first + tapsLen - 1
//
// Either one transform takes all inputs; it is long enough that what is wrapped around stays outside the outputs. Or blocks
// overlap by tapsLen - 1 inputs (filters/block_convolution.h).
// SPDX-License-Identifier: MIT
#include "filters/block_convolution.h"
#include "filters/sliding_results-inl.h"
#include "frame/buffer.h"

namespace kvrs::sliding {
namespace {

constexpr uint64_t kNearBytes = 16384, kTablePasses = 80;

struct Plan {
  int order;
  size_t overlap;  // results of a block in front of its first output
};

int orderOf(uint64_t points) {
  int order = 2;
  while (uint64_t{1} << order < points) ++order;
  return order;
}

// The time of a transform of 2^order points over that of one pass over one point. Doubles of the longer ones have no place in
// the nearest cache.
template <class T>
uint64_t timeOf(int order) {
  const uint64_t points = uint64_t{1} << order;
  return points * static_cast<uint64_t>(order) * (points * sizeof(T) > kNearBytes ? 3 : 2) / 2;
}

// The shortest time for making tables, the transform of the taps, and two transforms a block. What the tables take was
// measured: as long as kTablePasses passes.
template <class D, class T = Working<D>>
Plan planOf(const Sums<D>& s) {
  const uint64_t overlap = s.tapsLen - 1, all = s.inLen + overlap;
  const auto lo = static_cast<uint64_t>(s.first + static_cast<int64_t>(overlap));
  const uint64_t behind = lo + s.count, inFront = all - lo;
  Plan best{orderOf(behind > inFront ? behind : inFront), static_cast<size_t>(lo)};
  const auto timeWith = [](int order, uint64_t blocks) {
    return timeOf<T>(order) * (2 * blocks + 1) + (kTablePasses << order);
  };
  uint64_t shortest = timeWith(best.order, 1);
  for (int order = orderOf(overlap + 2); order < best.order; ++order) {
    const uint64_t step = (uint64_t{1} << order) - overlap;
    const uint64_t time = timeWith(order, (s.count + step - 1) / step);
    if (time < shortest) {
      shortest = time;
      best = {order, static_cast<size_t>(overlap)};
    }
  }
  return best;
}

template <class T>
int teamFor(const BlockConvolution<T>& blocks, size_t len) {
  const uint64_t count = blocks.blocks(len),
                 useful = workOfBlocks<T>(blocks.fftLen, count) / kWorkOfThread<T>,
                 most = useful < count ? useful : count;
  const int allowed = threadCount();
  return most < static_cast<uint64_t>(allowed) ? static_cast<int>(most) : allowed;
}

// Byte counts that may be more than an address can tell, each table at its own cache line.
class Bytes {
 public:
  uint64_t take(uint64_t bytes) {
    const uint64_t at = used_;
    used_ += (bytes + 63) & ~uint64_t{63};
    return at;
  }
  uint64_t used() const { return used_; }

 private:
  uint64_t used_ = 0;
};

// The transform of the taps, reversed.
template <class D, class T>
KvrStatus transformTaps(Sums<D> sums, T* spectrum, const BlockConvolution<T>& blocks) {
  sums.reversed = !sums.reversed;
  loadTaps(sums, 0, sums.tapsLen, spectrum);
  memset(static_cast<void*>(spectrum + sums.tapsLen), 0, (blocks.fftLen - sums.tapsLen) * sizeof(T));
  return BlockTransform<T>::forward(spectrum, spectrum, blocks.spec, blocks.buffers);
}

}  // namespace

template <class D>
KvrStatus byTransforms(const Sums<D>& all, const Results<D>& results, bool mayThread) {
  using T = Working<D>;
  using Transform = BlockTransform<T>;
  const Sums<D> sums = trimmed(all);
  const Plan plan = planOf(sums);
  int specSize, initBufSize, workSize;
  KvrStatus status = plan.order > 30 ? kvrStatusBadFftOrder
                                     : Transform::getSize(plan.order, &specSize, &initBufSize, &workSize);
  if (status != kvrStatusOk) return status;

  BlockConvolution<T> blocks{};
  blocks.fftLen = size_t{1} << plan.order;
  blocks.overlap = plan.overlap;
  blocks.bufferSize = static_cast<size_t>(workSize);
  const int team = mayThread ? teamFor(blocks, sums.count) : 1;
  const auto threads = static_cast<uint64_t>(team < 1 ? 1 : team);
  Bytes bytes;
  const uint64_t points = uint64_t{sizeof(T)} << plan.order;
  const uint64_t specAt = bytes.take(static_cast<uint64_t>(specSize)),
                 initBufAt = bytes.take(static_cast<uint64_t>(initBufSize)), spectrumAt = bytes.take(points),
                 framesAt = bytes.take(threads * points),
                 buffersAt = bytes.take(threads * static_cast<uint64_t>(workSize)),
                 statusesAt = bytes.take(threads * sizeof(KvrStatus));
  const Scratch memory(bytes.used() + 64);
  if (!memory.ok()) return kvrStatusOutOfMemory;
  Kvr8u* const base = alignUp(memory.as<Kvr8u>(), 64);
  auto* const spectrum = reinterpret_cast<T*>(base + spectrumAt);
  blocks.spectrum = spectrum;
  blocks.frames = reinterpret_cast<T*>(base + framesAt);
  blocks.buffers = workSize > 0 ? base + buffersAt : nullptr;
  blocks.statuses = reinterpret_cast<KvrStatus*>(base + statusesAt);
  typename Transform::Spec* spec;
  status = Transform::init(&spec, plan.order, base + specAt, base + initBufAt);
  if (status != kvrStatusOk) return status;
  blocks.spec = spec;
  status = transformTaps(sums, spectrum, blocks);
  if (status != kvrStatusOk) return status;

  const int64_t lo = sums.first + static_cast<int64_t>(sums.tapsLen) - 1,
                start = lo - static_cast<int64_t>(plan.overlap);  // the first input of the block of output 0
  const auto fetch = [&](size_t begin, size_t, T* frame) -> const T* {
    const int64_t at = start + static_cast<int64_t>(begin);
    if constexpr (std::is_same_v<D, T>) {
      if (at >= 0 && at + static_cast<int64_t>(blocks.fftLen) <= static_cast<int64_t>(sums.inLen)) {
        return sums.in + at;
      }
    }
    loadInputs(sums, at, frame, blocks.fftLen);
    return frame;
  };
  status = blocks.run(sums.count, team, fetch,
                      [&](T* sum, size_t begin, size_t count) { store(results, sum, begin, count); });
  if (status == kvrStatusOk && results.mirrored) mirror(results.dst, static_cast<int>(sums.count));
  return status;
}

template KvrStatus byTransforms<Kvr32f>(const Sums<Kvr32f>&, const Results<Kvr32f>&, bool);
template KvrStatus byTransforms<Kvr64f>(const Sums<Kvr64f>&, const Results<Kvr64f>&, bool);
template KvrStatus byTransforms<Kvr32fc>(const Sums<Kvr32fc>&, const Results<Kvr32fc>&, bool);
template KvrStatus byTransforms<Kvr64fc>(const Sums<Kvr64fc>&, const Results<Kvr64fc>&, bool);
template KvrStatus byTransforms<Kvr16s>(const Sums<Kvr16s>&, const Results<Kvr16s>&, bool);

}  // namespace kvrs::sliding
