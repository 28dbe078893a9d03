// SPDX-License-Identifier: Apache-2.0
// One call of an operation: its arguments, the memory of its regions, and what it comes to.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/reference.h"
#include "support/trial/region.h"

namespace lx::test {

struct Size {
  int width;
  int height;
};

/// What stands for a destination in place.
enum class Alias {
  kSameObject,
  kOtherObject,  ///< over the same pixels
  kNull          ///< a null destination, where it is allowed
};

/// Each side of a region of the operation cut to a power of two, where it must be one; 0 stays.
Size Fitting(const Operation& operation, Size size);

class Trial {
 public:
  /// The regions have still to be placed.
  Trial(const Operation& operation, Arguments arguments);
  /// All regions hold noise and have one size, unless the catalogue says that they may differ.
  Trial(const Operation& operation, Arguments arguments, Size size);
  /// The same with the most usual arguments.
  Trial(const Operation& operation, int choice, Size size = {19, 3});

  /// Lays region parameter `index` out in memory, showing `picture` and with its runs.
  void Place(std::size_t index, const Picture& picture, Layout layout, bool absoluteRuns = false);
  /// Gives vector parameter `index` another content.
  void SetVector(std::size_t index, const Elements& content);
  /// Source `index` becomes the pixels of `destination`.
  void Share(std::size_t index, std::size_t destination, Alias alias);
  /// Replaces region parameter `index` by one of another size, or by one that is not attached.
  void Resize(std::size_t index, Size size);
  void Detach(std::size_t index);
  /// Whether region parameter `index` still lies where it was placed.
  bool IsPlaced(std::size_t index) const {
    return arenas[index] != nullptr &&
           std::get<LxGenericROI*>(call.values[index]) == arenas[index]->Region();
  }
  /// The size that region parameter `index` must have, if it follows, from what is placed already,
  /// or is a part; else `agreed`.
  Size SizeOf(std::size_t index, Size agreed) const;
  /// Fills a picture for region parameter `index` with coordinates. False when it has levels.
  bool FillWithCoordinates(std::size_t index, Picture& picture, bool strays, Random& random) const;
  /// Another region object over the pixels of region parameter `index`.
  LxGenericROI* Twin(std::size_t index) const { return arenas[index]->Twin(); }

  /// Has the reference say what the call must come to, on the path that is taken now.
  const Outcome& Expect(const Reference& reference);
  /// Puts everything into its state before the call. The error state holds an older failure.
  void Prepare();
  void Call() { operation.call(call.values); }
  void Run() {
    Prepare();
    Call();
  }
  /// How the last run differs from what is expected; "" when it does not.
  std::string Difference() const;
  /// "" when the last run ended in `code`, traced what the catalogue says, and left all outputs
  /// alone unless the catalogue knows better.
  std::string Refusal(LX_ERRORS code) const;
  /// "" when the trace is one that the catalogue allows.
  std::string TraceFault() const;

  /// The region parameters.
  const std::vector<std::size_t>& Regions() const { return regions; }
  const Operation& Described() const { return operation; }

  Arguments call;

 private:
  std::string ValueDifference(std::size_t index, const Plain& wanted) const;

  const Operation& operation;
  std::vector<std::size_t> regions;
  std::vector<Plain> before;                   // by parameter
  std::vector<std::shared_ptr<Arena>> arenas;  // by parameter; shared in place
  Outcome expected;
  double tolerance = 0;
  std::vector<std::unique_ptr<LxGenericROI>> others;
};

/// The trace of the calling thread.
std::vector<std::string> TraceNow();

}  // namespace lx::test
