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
#define LX_DEFINE_FILTER(name, greyTrace)                                         \
  void PicConvol##name(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {         \
    RunFilter(greyTrace " (BW8)", Filter::k##name, source, destination);          \
  }                                                                               \
  void PicConvol##name(LxROI<LxBW16>* source, LxROI<LxBW16>* destination) {       \
    RunFilter(greyTrace " (BW16)", Filter::k##name, source, destination);         \
  }                                                                               \
  void PicConvol##name(LxROI<LxC24>* source, LxROI<LxC24>* destination) {         \
    RunFilter("PicConvol" #name " ( C24)", Filter::k##name, source, destination); \
  }

LX_DEFINE_FILTER(SobelX, "PicConvolSobelX")
LX_DEFINE_FILTER(SobelY, "PicConvolSobelY")
LX_DEFINE_FILTER(Sobel, "PicConvolSobel")
LX_DEFINE_FILTER(PrewittX, "PicConvolPrewittX")
LX_DEFINE_FILTER(PrewittY, "PicConvolPrewittY")
LX_DEFINE_FILTER(Prewitt, "PicConvolPrewitt")
LX_DEFINE_FILTER(Laplacian4, "PicConvolLaplacian4")
LX_DEFINE_FILTER(Laplacian8, "PicConvolLaplacian8")
LX_DEFINE_FILTER(LaplacianX, "PicConvolLaplacianX")
LX_DEFINE_FILTER(LaplacianY, "PicConvolLaplacianY")
LX_DEFINE_FILTER(Highpass1, "PicConvolHighpass1")
LX_DEFINE_FILTER(Highpass2, "PicConvolHighpass2")
LX_DEFINE_FILTER(Lowpass1, "PicConvolLowpass1")
LX_DEFINE_FILTER(Lowpass2, "PicConvolLowpass2")
LX_DEFINE_FILTER(Lowpass3, "PicConvolLowpass3")
LX_DEFINE_FILTER(GradientX, "PicConvolGradientX")
LX_DEFINE_FILTER(GradientY, "ConvolGradientY")
LX_DEFINE_FILTER(Gradient, "PicConvolGradient")

#undef LX_DEFINE_FILTER

void PicConvolRoberts(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunRoberts("PicConvolRoberts", source, destination);
}

void PicConvolRoberts(LxROI<LxBW16>* source, LxROI<LxBW16>* destination) {
  RunRoberts("PicConvolRoberts (BW16)", source, destination);
}

void PicConvolRoberts(LxROI<LxC24>* source, LxROI<LxC24>* destination) {
  RunFilter("PicConvolRoberts ( C24)", Filter::kRoberts, source, destination);
}
