// SPDX-License-Identifier: Apache-2.0
#include "lxpic/profile/contour.h"

#include <climits>
#include <type_traits>

#include "foundation/frame.h"
#include "profile/contour_walk.h"

namespace {

using namespace lx;
using namespace lx::profile;

// What a mode stands for.
struct Manner {
  bool clockwise;
  bool alongBorder;
  bool bothWays;
};

constexpr std::array<Manner, 6> kManners = {{{true, false, false},
                                             {true, true, false},
                                             {true, false, true},
                                             {false, false, false},
                                             {false, false, true},
                                             {false, true, false}}};

// What is to be followed, from where, and how.
struct Task {
  CONTOUR_MODE mode;
  Point start;
  CONTOUR_THRESHOLD test;
  unsigned threshold;
  CONNEXITY connectivity;
};

// A path that is made. The vector learns how many points it has when it must grow and at the end.
template <class Vector>
class PathRecord {
 public:
  using Element = std::remove_reference_t<decltype(*std::declval<Vector&>().begin())>;

  PathRecord(Vector& path, bool chainCode) : path_(path), chainCode_(chainCode) {}
  PathRecord(const PathRecord&) = delete;
  PathRecord& operator=(const PathRecord&) = delete;
  ~PathRecord() { path_.SetNumElements(Count()); }

  LX_ERRORS Begin() {
    next_ = path_.begin();
    end_ = next_ + path_.GetMaxElements();
    return LX_OK;
  }

  static bool Fits(Point point) { return (point.x | point.y) <= INT16_MAX; }

  template <typename Level>
  LX_ERRORS Add(Point at, [[maybe_unused]] Level level, [[maybe_unused]] int direction) {
    if (next_ == end_ && !Grow()) return LxGetError();
    // Field by field: an element that was put together elsewhere takes as long as the step.
    Element& element = *next_++;
    element.m_n16X = static_cast<std::int16_t>(at.x);
    element.m_n16Y = static_cast<std::int16_t>(at.y);
    if constexpr (!std::is_same_v<Element, LxPath>) {
      LevelOf(element) = chainCode_ ? static_cast<Level>(direction) : level;
    }
    return LX_OK;
  }

  static LX_ERRORS Close() { return LX_OK; }

 private:
  static LxBW8& LevelOf(LxBW8Path& point) { return point.m_bw8Pixel; }
  static LxBW16& LevelOf(LxBW16Path& point) { return point.m_bw16Pixel; }

  unsigned Count() const { return static_cast<unsigned>(next_ - path_.begin()); }

  // The vector doubles its capacity for an element, which is then written.
  bool Grow() {
    const unsigned count = Count();
    path_.SetNumElements(count);
    path_.AddElement(Element{});
    next_ = path_.begin() + count;
    end_ = path_.begin() + path_.GetMaxElements();
    return next_ != end_;
  }

  Vector& path_;
  bool chainCode_;
  Element* next_ = nullptr;
  Element* end_ = nullptr;
};

// Groups of an untyped vector, at most an eighth as many as the region has pixels.
class GroupRecord {
 public:
  GroupRecord(LxVector& vector, std::uint64_t pixels) : vector_(vector), most_(pixels / 8) {}
  GroupRecord(const GroupRecord&) = delete;
  GroupRecord& operator=(const GroupRecord&) = delete;
  ~GroupRecord() { vector_.SetNbGroup(static_cast<int>(count_)); }

  LX_ERRORS Begin() {
    constexpr int kUsualGroups = 2000;
    if (vector_.GetVectType() != LX_VECTOR_CONTOUR) {
      vector_.SetType(LX_VECTOR_CONTOUR, kUsualGroups, 0);
    }
    if (LxGetError() != LX_OK) {
      count_ = static_cast<std::uint64_t>(vector_.GetNbGroup());
      return LxGetError();
    }
    Locate();
    return next_ == nullptr ? LX_ERROR_VECTOR_NO_DATA : LX_OK;
  }

  static bool Fits(Point /*point*/) { return true; }

  LX_ERRORS Add(Point at, std::uint8_t /*level*/, int direction) {
    if (const LX_ERRORS code = Close(); code != LX_OK) return code;
    if (count_ == room_ && !Grow()) return LxGetError();
    next_[0] = at.x;
    next_[1] = at.y;
    next_[2] = direction;
    next_ += 3;
    ++count_;
    return LX_OK;
  }

  // A contour that closes with its last allowed point has one too many.
  LX_ERRORS Close() const { return count_ < most_ ? LX_OK : LX_ERROR_CONTOUR_OVERFLOW; }

 private:
  void Locate() {
    room_ = static_cast<std::uint64_t>(vector_.GetNbMaxGroup());
    next_ = static_cast<std::int32_t*>(vector_.GetDataPtr());
    if (next_ != nullptr) next_ += 3 * count_;
  }

  bool Grow() {
    constexpr std::size_t kMoreBytes = 24576;
    const std::size_t bytes = vector_.GetAllocatedSize();
    if (!Require(bytes <= INT_MAX - kMoreBytes, LX_ERROR_ALLOCATION_FAILED)) return false;
    vector_.Reallocate(static_cast<int>(bytes + kMoreBytes));
    Locate();
    return count_ < room_;
  }

  LxVector& vector_;
  std::uint64_t most_;
  std::uint64_t count_ = 0;
  std::uint64_t room_ = 0;
  std::int32_t* next_ = nullptr;
};

// The contour, in one sense or in both. Returns whether it was open.
template <typename Level, class T, class MakeRecord>
bool Trace(const LxROI<T>* region, const Task& task, const MakeRecord& makeRecord) {
  const Manner& manner = kManners[static_cast<std::size_t>(task.mode)];
  const Levels object = task.test == CONTOUR_ABOVE_THRESHOLD
                            ? Levels{task.threshold, UINT32_MAX - task.threshold}
                            : Levels{0, task.threshold};
  const Ground ground = {RowsOf(region), static_cast<int>(region->GetWidth()),
                         static_cast<int>(region->GetHeight()), object,
                         manner.alongBorder ? Seen::kBackground : Seen::kOutside};
  Point start = task.start;
  const auto follow = [&](bool clockwise) {
    const auto& senses = kTurns[task.connectivity == CONNEXITY_8 ? 1 : 0];
    return Follow<Level>(ground, senses[clockwise ? 1 : 0], start, makeRecord);
  };
  LX_ERRORS code = follow(manner.clockwise);
  const bool isOpen = code == LX_ERROR_POINT_OUTSIDE_IMAGE;
  if (isOpen && manner.bothWays) {
    const LX_ERRORS second = follow(!manner.clockwise);
    const bool isFound = second != LX_OK && second != LX_ERROR_CONTOUR_START_ISOLATED &&
                         second != LX_ERROR_CONTOUR_START_INSIDE_OBJECT;
    if (isFound) code = second;
  }
  if (code != LX_OK) LxSetError(code);
  return isOpen;
}

template <class T, class Vector, class Body>
void Run(const char* trace, LxROI<T>* region, const Task& task, Vector* vector, const Body& body) {
  RunOperation(trace, [&] {
    const bool knownMode = task.mode >= 0 && task.mode < static_cast<int>(kManners.size());
    const bool knownNeighbours =
        task.connectivity == CONNEXITY_4 || task.connectivity == CONNEXITY_8;
    if (!Require(knownMode && knownNeighbours, LX_ERROR_UNKNOWN_MODE) || !Attached({region}) ||
        !Require(vector != nullptr, LX_ERROR_VECTOR_NO_DATA)) {
      return;
    }
    body();
  });
}

template <class T, class Vector>
void Contour(const char* trace, LxROI<T>* region, const Task& task, Vector* path,
             bool chainCode = false) {
  Run(trace, region, task, path, [&] {
    const bool isOpen = Trace<decltype(T::value)>(
        region, task, [&] { return PathRecord<Vector>(*path, chainCode); });
    path->m_bClosed = isOpen ? 0 : 1;
  });
}

}  // namespace

void PicContour(LxROI<LxBW8>* region, CONTOUR_MODE mode, int startX, int startY,
                CONTOUR_THRESHOLD test, unsigned threshold, CONNEXITY connectivity,
                LxPathVector* path) {
  Contour("PicContour ( LxPathVector)", region,
          {mode, {startX, startY}, test, threshold, connectivity}, path);
}

void PicContour(LxROI<LxBW8>* region, CONTOUR_MODE mode, int startX, int startY,
                CONTOUR_THRESHOLD test, unsigned threshold, CONNEXITY connectivity,
                LxBW8PathVector* path, int chainCode) {
  Contour("PicContour ( LxBW8PathVector)", region,
          {mode, {startX, startY}, test, threshold, connectivity}, path, chainCode != 0);
}

void PicContour(LxROI<LxBW8>* region, CONTOUR_MODE mode, int startX, int startY,
                CONTOUR_THRESHOLD test, unsigned threshold, CONNEXITY connectivity,
                LxVector* vector) {
  const Task task = {mode, {startX, startY}, test, threshold, connectivity};
  Run("PicContour ( LxVector)", region, task, vector, [&] {
    const std::uint64_t pixels = std::uint64_t{region->GetWidth()} * region->GetHeight();
    Trace<std::uint8_t>(region, task, [&] { return GroupRecord(*vector, pixels); });
  });
}

void PicContour(LxROI<LxBW16>* region, CONTOUR_MODE mode, int startX, int startY,
                CONTOUR_THRESHOLD test, unsigned threshold, CONNEXITY connectivity,
                LxPathVector* path) {
  Contour("PicContour ( LxPathVector)(BW16)", region,
          {mode, {startX, startY}, test, threshold, connectivity}, path);
}

void PicContour(LxROI<LxBW16>* region, CONTOUR_MODE mode, int startX, int startY,
                CONTOUR_THRESHOLD test, unsigned threshold, CONNEXITY connectivity,
                LxBW16PathVector* path, int chainCode) {
  Contour("PicContour ( LxBW16PathVector)(BW16)", region,
          {mode, {startX, startY}, test, threshold, connectivity}, path, chainCode != 0);
}
