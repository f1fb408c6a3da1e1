// Sliding sums by discrete Fourier transforms. With the taps reversed they are a convolution, of which outputs lo, lo + 1 ...
// are wanted:
//
//   out[n] = y[lo + n],  y[i] = sum over k of tap[tapsLen-1-k] * in[i - k],  lo = first + tapsLen - 1
//
// - One transform takes all inputs; it is long enough that what is wrapped around stays outside the outputs.
// - Blocks overlap by tapsLen - 1 inputs (filters/block_convolution.h): for taps that are few beside the inputs.
// - Pieces of the taps meet their inputs in blocks whose products are added up before the one transform back: for outputs that
//   are few beside the taps (Rader, An improved algorithm for high speed autocorrelation, 1970).
// SPDX-License-Identifier: MIT
#include "filters/block_convolution.h"
#include "filters/sliding_results-inl.h"
#include "frame/buffer.h"

namespace kvrs::sliding {
namespace {

constexpr uint64_t kNearBytes = 16384, kTablePasses = 20;

struct Plan {
  int order;
  size_t overlap;  // results of a block in front of its first output
  size_t piece;    // taps of a piece; 0: all in one
};

// Real blocks want 32 points (fft::convolve), and fewer are no gain.
constexpr int kLeastOrder = 5;

int orderOf(uint64_t points) {
  int order = kLeastOrder;
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

// The shortest time for the tables, which were measured to take as long as kTablePasses passes, and all transforms.
template <class D, class T = Working<D>>
Plan planOf(const Sums<D>& s) {
  const uint64_t overlap = s.tapsLen - 1, all = s.inLen + overlap;
  const auto lo = static_cast<uint64_t>(s.first + static_cast<int64_t>(overlap));
  const uint64_t behind = lo + s.count, inFront = all - lo;
  const auto timeWith = [](int order, uint64_t transforms) {
    return timeOf<T>(order) * transforms + (kTablePasses << order);
  };
  Plan best{orderOf(behind > inFront ? behind : inFront), static_cast<size_t>(lo), 0};
  uint64_t shortest = timeWith(best.order, 3);
  for (int order = best.order - 1; order >= kLeastOrder; --order) {
    const uint64_t points = uint64_t{1} << order;
    const auto compare = [&](uint64_t transforms, uint64_t before, uint64_t piece) {
      const uint64_t time = timeWith(order, transforms);
      if (time >= shortest) return;
      shortest = time;
      best = {order, static_cast<size_t>(before), static_cast<size_t>(piece)};
    };
    if (points > overlap) {
      const uint64_t step = points - overlap;
      compare(2 * ((s.count + step - 1) / step) + 1, overlap, 0);
    }
    if (points >= s.count) {
      const uint64_t piece = points - s.count + 1;
      compare(2 * ((s.tapsLen + piece - 1) / piece) + 1, piece - 1, piece);
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

// The transform of so many zeros, `count` taps from `from` on, the last one first, and zeros behind.
template <class D, class T>
KvrStatus transformTaps(Sums<D> sums, size_t from, size_t count, size_t zeros, T* spectrum,
                        const BlockConvolution<T>& blocks) {
  sums.reversed = !sums.reversed;
  memset(static_cast<void*>(spectrum), 0, zeros * sizeof(T));
  loadTaps(sums, sums.tapsLen - from - count, count, spectrum + zeros);
  const size_t end = zeros + count;
  memset(static_cast<void*>(spectrum + end), 0, (blocks.fftLen - end) * sizeof(T));
  return BlockTransform<T>::forward(spectrum, spectrum, blocks.spec, blocks.buffers);
}

inline void add(const Kvr32f* from, Kvr32f* to, int len) {
  kvrsAdd_32f_I(from, to, len);
}
inline void add(const Kvr64f* from, Kvr64f* to, int len) {
  kvrsAdd_64f_I(from, to, len);
}
inline void add(const Kvr32fc* from, Kvr32fc* to, int len) {
  kvrsAdd_32fc_I(from, to, len);
}
inline void add(const Kvr64fc* from, Kvr64fc* to, int len) {
  kvrsAdd_64fc_I(from, to, len);
}

// All outputs, stored block by block.
template <class D, class T>
KvrStatus runBlocks(const Sums<D>& sums, const Results<D>& results, const BlockConvolution<T>& blocks,
                    int team) {
  // The first input of the block that begins with output 0.
  const int64_t start =
      sums.first + static_cast<int64_t>(sums.tapsLen) - 1 - static_cast<int64_t>(blocks.overlap);
  const auto fetch = [&, start](size_t begin, size_t, T* frame) -> const T* {
    const int64_t at = start + static_cast<int64_t>(begin);
    if constexpr (std::is_same_v<D, T>) {
      if (at >= 0 && at + static_cast<int64_t>(blocks.fftLen) <= static_cast<int64_t>(sums.inLen)) {
        return sums.in + at;
      }
    }
    loadInputs(sums, at, frame, blocks.fftLen);
    return frame;
  };
  return blocks.run(sums.count, team, fetch,
                    [&](T* sum, size_t begin, size_t count) { store(results, sum, begin, count); });
}

// All outputs, in blocks.frames + blocks.overlap. The frames are two.
template <class D, class T>
KvrStatus runPieces(const Sums<D>& sums, size_t piece, T* spectrum, const BlockConvolution<T>& blocks) {
  using Transform = BlockTransform<T>;
  const size_t inputs = sums.count + piece - 1;
  const int points = static_cast<int>(blocks.fftLen);
  for (size_t from = 0; from < sums.tapsLen; from += piece) {
    const size_t count = sums.tapsLen - from < piece ? sums.tapsLen - from : piece;
    T* const frame = from == 0 ? blocks.frames : blocks.frames + blocks.fftLen;
    loadInputs(sums, sums.first + static_cast<int64_t>(from), frame, inputs);
    memset(static_cast<void*>(frame + inputs), 0, (blocks.fftLen - inputs) * sizeof(T));
    KvrStatus status = transformTaps(sums, from, count, piece - count, spectrum, blocks);
    if (status == kvrStatusOk) status = Transform::forward(frame, frame, blocks.spec, blocks.buffers);
    if (status == kvrStatusOk) status = Transform::multiply(spectrum, frame, points);
    if (status != kvrStatusOk) return status;
    if (from > 0) add(frame, blocks.frames, points);
  }
  return Transform::inverse(blocks.frames, blocks.spec, blocks.buffers);
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
  const int team = mayThread && plan.piece == 0 ? teamFor(blocks, sums.count) : 1;
  const auto threads = static_cast<uint64_t>(team < 1 ? 1 : team), frames = threads + (plan.piece > 0);
  Bytes bytes;
  const uint64_t points = uint64_t{sizeof(T)} << plan.order;
  const uint64_t specAt = bytes.take(static_cast<uint64_t>(specSize)),
                 initBufAt = bytes.take(static_cast<uint64_t>(initBufSize)), spectrumAt = bytes.take(points),
                 framesAt = bytes.take(frames * points),
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
  if (plan.piece > 0) {
    status = runPieces(sums, plan.piece, spectrum, blocks);
    if (status == kvrStatusOk) store(results, blocks.frames + plan.overlap, 0, sums.count);
  } else {
    status = transformTaps(sums, 0, sums.tapsLen, 0, spectrum, blocks);
    if (status == kvrStatusOk) status = runBlocks(sums, results, blocks, team);
  }
  if (status == kvrStatusOk && results.mirrored) mirror(results.dst, static_cast<int>(sums.count));
  return status;
}

template KvrStatus byTransforms<Kvr32f>(const Sums<Kvr32f>&, const Results<Kvr32f>&, bool);
template KvrStatus byTransforms<Kvr64f>(const Sums<Kvr64f>&, const Results<Kvr64f>&, bool);
template KvrStatus byTransforms<Kvr32fc>(const Sums<Kvr32fc>&, const Results<Kvr32fc>&, bool);
template KvrStatus byTransforms<Kvr64fc>(const Sums<Kvr64fc>&, const Results<Kvr64fc>&, bool);
template KvrStatus byTransforms<Kvr16s>(const Sums<Kvr16s>&, const Results<Kvr16s>&, bool);

}  // namespace kvrs::sliding
