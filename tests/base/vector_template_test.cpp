// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/vector_template.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

#include "lxpic/vectors/elements.h"
#include "support/allocation_failure.h"
#include "support/outcome_text.h"

namespace {

using lx::test::FailAllocation;
using lx::test::LiveAllocations;
using lx::test::TakeOutcome;
using Vector = LxVectorTemplate<unsigned>;

Vector Counting(unsigned count) {
  Vector vector;
  vector.SetNumElements(count);
  for (unsigned i = 0; i < count; ++i) vector[i] = i + 100;
  return vector;
}

/// The elements and the capacity.
using State = std::pair<std::vector<unsigned>, unsigned>;

State StateOf(const Vector& vector) {
  return {{vector.begin(), vector.end()}, vector.GetMaxElements()};
}

class VectorTemplate : public testing::Test {
 protected:
  VectorTemplate() : live(LiveAllocations()) { LxOk(); }
  ~VectorTemplate() override {
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(LiveAllocations(), live);
  }

  std::int64_t live;
};

TEST_F(VectorTemplate, DoublesWhenFull) {
  Vector vector;
  std::vector<unsigned> capacities;
  for (unsigned i = 0; i < 5; ++i) {
    vector.AddElement(i);
    capacities.push_back(vector.GetMaxElements());
  }
  EXPECT_EQ(capacities, (std::vector<unsigned>{1, 2, 4, 4, 8}));
  for (int i = 0; i < 4; ++i) vector.AddElementByRef(vector[1]);
  EXPECT_EQ(StateOf(vector), (State{{0, 1, 2, 3, 4, 1, 1, 1, 1}, 16}));
}

TEST_F(VectorTemplate, CapacityIsExactAndKeepsOnRequest) {
  Vector vector = Counting(5);
  EXPECT_EQ(vector.GetMaxElements(), 5U);
  vector.SetMaxElements(5, 0);
  EXPECT_EQ(StateOf(vector), StateOf(Counting(5)));
  vector.SetMaxElements(3, 1);
  EXPECT_EQ(StateOf(vector), (State{{100, 101, 102}, 3}));
  vector.SetNumElements(2);
  vector.SetMaxElements(9, 1);
  EXPECT_EQ(StateOf(vector), (State{{100, 101}, 9}));
  vector.SetNumElements(9);
  EXPECT_EQ(vector[1], 101U);
  vector.SetMaxElements(3, 0);
  EXPECT_EQ(StateOf(vector), (State{{}, 3}));
  vector.SetNumElements(3);
  vector.Empty();
  EXPECT_EQ(StateOf(vector), (State{{}, 3}));
  vector.SetMaxElements(0, 1);
  EXPECT_EQ(vector.GetDataPtr(), nullptr);
}

TEST_F(VectorTemplate, RemovesOneElement) {
  Vector vector = Counting(4);
  vector.RemoveElement(1);
  EXPECT_EQ(StateOf(vector), (State{{100, 102, 103}, 4}));
  vector.RemoveElement(2);
  EXPECT_EQ(TakeOutcome(), "0");
  for (const unsigned index : {2U, 0xFFFFFFFFU}) {
    vector.RemoveElement(index);
    EXPECT_EQ(TakeOutcome(), "1011 LxVector::RemoveElement");
  }
  EXPECT_EQ(StateOf(vector), (State{{100, 102}, 4}));
}

TEST_F(VectorTemplate, OutOfRangeGivesTheSpareElementOfTheThread) {
  Vector vector = Counting(2);
  vector.SetMaxElements(8, 1);
  EXPECT_EQ(vector[2], 0U);
  vector[0xFFFFFFFF] = 7;
  EXPECT_EQ(TakeOutcome(), "1011 LxVector::operator[] < LxVector::operator[]");
  EXPECT_EQ(Vector()[0], 7U);
  EXPECT_EQ(TakeOutcome(), "1011 LxVector::operator[]");
  EXPECT_EQ(StateOf(vector), (State{{100, 101}, 8}));
  std::thread([] {
    EXPECT_EQ(Vector()[0], 0U);
    EXPECT_EQ(LxGetError(), 1011);
  }).join();
  EXPECT_EQ(LxGetError(), 0);
  vector[2] = 0;
  LxOk();
}

TEST_F(VectorTemplate, CopiesExactlyAndLeavesTheErrorsOfOthersAlone) {
  LxSetError(LX_ERROR_SIZE_MISMATCH);
  const State three = StateOf(Counting(3));
  Vector source = Counting(3);
  source.SetMaxElements(10, 1);
  const Vector copy(source);
  EXPECT_EQ(StateOf(copy), three);
  EXPECT_NE(copy.GetDataPtr(), source.GetDataPtr());

  Vector target = Counting(7);
  target = source;
  EXPECT_EQ(StateOf(target), three);
  Vector& self = source;
  source = self;
  EXPECT_EQ(source.CopyTo(&source), &source);
  EXPECT_EQ(source.InternalCopyTo(&source, 1), &source);
  EXPECT_EQ(StateOf(source), (State{three.first, 10}));

  const std::unique_ptr<Vector> made(source.CopyTo(nullptr));
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(StateOf(*made), three);
  target = Vector();
  EXPECT_EQ(StateOf(target), State());
  EXPECT_EQ(target.GetDataPtr(), nullptr);
  EXPECT_EQ(TakeOutcome(), "1403");
}

TEST_F(VectorTemplate, InitEmptyForgetsWithoutFreeing) {
  Vector source = Counting(3);
  Vector copy;
  EXPECT_EQ(source.InternalCopyTo(&copy, 1), &copy);
  unsigned* const storage = copy.GetDataPtr();
  copy.InitEmpty();
  EXPECT_EQ(StateOf(copy), State());
  EXPECT_EQ(LiveAllocations(), live + 2);
  ::operator delete (storage, std::align_val_t{64});
}

TEST_F(VectorTemplate, FailedGrowthChangesNothing) {
  Vector vector = Counting(4);
  unsigned* const storage = vector.GetDataPtr();
  const auto check = [&](auto change, const char* outcome) {
    const FailAllocation guard(0);
    change();
    EXPECT_TRUE(guard.Fired());
    EXPECT_EQ(TakeOutcome(), outcome);
    EXPECT_EQ(vector.GetDataPtr(), storage);
    EXPECT_EQ(StateOf(vector), StateOf(Counting(4)));
  };
  check([&] { vector.SetMaxElements(5, 1); }, "1303 LxVector::SetMaxElements");
  check([&] { vector.SetMaxElements(2, 0); }, "1303 LxVector::SetMaxElements");
  check([&] { vector.SetNumElements(5); },
        "1303 LxVector::SetMaxElements < LxVector::SetNumElements");
  check([&] { vector.AddElement(1); }, "1303 LxVector::SetMaxElements < LxVector::AddElement");
  check([&] { vector.AddElementByRef(vector[0]); },
        "1303 LxVector::SetMaxElements < LxVector::AddElementByRef");
  const Vector source = Counting(9);
  check([&] { vector = source; }, "1303 LxVector::SetMaxElements");
  check([&] { EXPECT_EQ(source.CopyTo(&vector), &vector); }, "1303 LxVector::SetMaxElements");
}

TEST_F(VectorTemplate, EveryAllocationOfACopyMayFail) {
  const Vector source = Counting(9);
  int failure = 0;
  const int failures = lx::test::FailEachAllocation(
      [&] {
        const std::unique_ptr<Vector> made(source.CopyTo(nullptr));
        EXPECT_EQ(made == nullptr, LxGetError() != LX_OK);
      },
      [&] {
        EXPECT_EQ(TakeOutcome(),
                  failure++ == 0 ? "1303 LxVector::CopyTo" : "1303 LxVector::SetMaxElements");
        EXPECT_EQ(LiveAllocations(), live + 1);
      });
  EXPECT_EQ(failures, 2);
  const auto constructed = [&] {
    const Vector copy(source);
    EXPECT_EQ(copy.GetNumElements(), LxGetError() == LX_OK ? 9U : 0U);
  };
  EXPECT_EQ(lx::test::FailEachAllocation(constructed, LxOk), 1);
}

TEST_F(VectorTemplate, SizesNeverWrap) {
  LxVectorTemplate<LxPeak> peaks;
  const FailAllocation guard(0);
  peaks.SetNumElements(0xFFFFFFFF);
  EXPECT_EQ(lx::test::LastAllocation(), 0xFFFFFFFF * sizeof(LxPeak));
  EXPECT_EQ(TakeOutcome(), "1303 LxVector::SetMaxElements < LxVector::SetNumElements");
  EXPECT_EQ(peaks.GetNumElements() + peaks.GetMaxElements(), 0U);
}

}  // namespace
