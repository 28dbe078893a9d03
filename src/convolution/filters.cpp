// SPDX-License-Identifier: Apache-2.0
#include "lxpic/convolution/filters.h"

#include "convolution/apply_filter.h"
#include "foundation/frame.h"

namespace {

using namespace lx;
using namespace lx::convolution;

template <class T>
void RunFilter(const char* trace, Filter filter, LxROI<T>* source, LxROI<T>* destination) {
  RunOperation(trace, [&] {
    if (!UsablePair(source, destination)) return;
    ApplyFilter(filter, CurrentPath(), source, destination == nullptr ? source : destination);
  });
}

// Grey Roberts needs a destination of its own.
template <class T>
void RunRoberts(const char* trace, LxROI<T>* source, LxROI<T>* destination) {
  RunOperation(trace, [&] {
    if (!UsableApart(source, destination)) return;
    ApplyFilter(Filter::kRoberts, CurrentPath(), source, destination);
  });
}

}  // namespace

// The three overloads of a filter.
#define LX_DEFINE_FILTER(function, rule, border, trace, summary)          \
  void function(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {        \
    RunFilter(trace " (BW8)", Filter::k##rule, source, destination);      \
  }                                                                       \
  void function(LxROI<LxBW16>* source, LxROI<LxBW16>* destination) {      \
    RunFilter(trace " (BW16)", Filter::k##rule, source, destination);     \
  }                                                                       \
  void function(LxROI<LxC24>* source, LxROI<LxC24>* destination) {        \
    RunFilter(#function " ( C24)", Filter::k##rule, source, destination); \
  }
#define LX_NO_FUNCTION(rule, border)

LX_FILTERS(LX_DEFINE_FILTER, LX_NO_FUNCTION)

#undef LX_DEFINE_FILTER
#undef LX_NO_FUNCTION

void PicConvolRoberts(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunRoberts("PicConvolRoberts", source, destination);
}

void PicConvolRoberts(LxROI<LxBW16>* source, LxROI<LxBW16>* destination) {
  RunRoberts("PicConvolRoberts (BW16)", source, destination);
}

void PicConvolRoberts(LxROI<LxC24>* source, LxROI<LxC24>* destination) {
  RunFilter("PicConvolRoberts ( C24)", Filter::kRoberts, source, destination);
}
