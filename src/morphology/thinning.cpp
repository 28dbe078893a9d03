// SPDX-License-Identifier: Apache-2.0
#include "lxpic/morphology/thinning.h"

#include <cstring>
#include <utility>

#include "foundation/frame.h"
#include "morphology/hit_or_miss.h"

namespace {

using namespace lx;
using namespace lx::morphology;

constexpr unsigned kCells = 9;
constexpr int kTurn = 8;  // passes of an iteration with rotation
constexpr int kMostCounted = 1023;

bool TakePattern(LxKernel* kernel, HitOrMiss& work) {
  if (kernel == nullptr) return Require(false, LX_ERROR_KERNEL_NO_DATA);
  if (!Require(kernel->GetSizeX() == 3 && kernel->GetSizeY() == 3,
               LX_ERROR_UNSUPPORTED_KERNEL_SIZE)) {
    return false;
  }
  const float* const data = kernel->GetDataPtr();
  if (data == nullptr || kernel->GetAllocatedSize() < kCells) {
    return Require(false, LX_ERROR_KERNEL_NO_DATA);
  }
  for (unsigned i = 0; i < kCells; ++i) {
    const bool isKnown = data[i] == -1.0F || data[i] == 0.0F || data[i] == 1.0F;
    if (!Require(isKnown, LX_ERROR_KERNEL_UNSUITABLE)) return false;
    work.cells[i] = static_cast<int>(data[i]);
  }
  work.outsideMatches = kernel->GetOutsideValue() != 0;
  return true;
}

// The most passes, from the most iterations that `count` holds.
bool TakeLimit(KERNEL_ROTATION rotation, int& count, HitOrMiss& work, std::size_t& limit) {
  const int most = std::exchange(count, 0);
  work.rotation = rotation;
  if (!Require(rotation >= KERNEL_ROTATION_NONE && rotation <= KERNEL_ROTATION_ANTICLOCKWISE,
               LX_ERROR_ARGUMENT_4_OUT_OF_RANGE)) {
    return false;
  }
  if (!Require(most >= 0 && most <= kMostCounted, LX_ERROR_ARGUMENT_5_OUT_OF_RANGE)) return false;
  limit = most == 0 ? work.width : static_cast<std::size_t>(most);
  if (rotation != KERNEL_ROTATION_NONE) limit *= kTurn;
  return true;
}

// Every component is an operation of its own, which takes what the one before has left in `count`.
// Nothing is written before all of them are done.
void RunComponents(HitOrMiss& work, const char* step, LxKernel* pattern, KERNEL_ROTATION rotation,
                   int& count) {
  std::size_t limit = 0;
  const auto accepts = [&] {
    if (TakePattern(pattern, work) && TakeLimit(rotation, count, work, limit)) return true;
    LxTraceError(step);
    return false;
  };
  if (!accepts() || work.width == 0 || work.height == 0) return;
  const std::size_t words = BitLayout(work).Words(work.components);
  const Scratch<std::uint64_t> bits(words);
  if (!bits) return LxSetError(LX_ERROR_NOT_ENOUGH_MEMORY);
  std::memset(bits.get(), 0, words * sizeof(std::uint64_t));
  for (std::size_t c = 0; c < work.components; ++c) {
    if (c > 0 && !accepts()) return;
    const std::size_t passes = TransformComponent(work, c, limit, bits.get());
    count = static_cast<int>(rotation == KERNEL_ROTATION_NONE ? passes : passes / kTurn);
  }
  WriteComponents(work, bits.get());
}

// `step` is what a component traces.
template <class T>
void Run(const char* trace, const char* step, bool sets, LxROI<T>* source, LxROI<T>* destination,
         LxKernel* pattern, KERNEL_ROTATION rotation, int& count) {
  RunOperation(trace, [&] {
    if (!Usable({source, destination})) return;
    HitOrMiss work = HitOrMissOf(destination, source);
    work.sets = sets;
    RunComponents(work, step, pattern, rotation, count);
  });
}

}  // namespace

#define LX_DEFINE_FORM(function, sets, pixel, suffix, step)                           \
  void function(LxROI<pixel>* source, LxROI<pixel>* destination, LxKernel* pattern,   \
                KERNEL_ROTATION rotation, int& count) {                               \
    Run(#function suffix, step, sets, source, destination, pattern, rotation, count); \
  }
#define LX_DEFINE_OPERATION(function, sets)                  \
  LX_DEFINE_FORM(function, sets, LxBW8, "", nullptr)         \
  LX_DEFINE_FORM(function, sets, LxBW16, " (BW16)", nullptr) \
  LX_DEFINE_FORM(function, sets, LxC24, " ( C24)", #function)

LX_DEFINE_OPERATION(PicThin, false)
LX_DEFINE_OPERATION(PicThick, true)

#undef LX_DEFINE_OPERATION
#undef LX_DEFINE_FORM
