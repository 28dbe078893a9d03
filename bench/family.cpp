// SPDX-License-Identifier: Apache-2.0
#include "bench/family.h"

#include <hwy/targets.h>

#include <map>
#include <string>

namespace lx::bench {

const Target& Targets::Here() const {
  return (hwy::SupportedTargets() & HWY_AVX3_DL) != 0 ? wide : narrow;
}

const Family& FamilyOf(const Operation& operation) {
  // Functions that have a file of their own, apart from the rest of their family.
  static const std::map<std::string, const Family*> functions = [] {
    std::map<std::string, const Family*> made;
    for (const char* const name :
         {"PicMedian", "PicDistance", "PicErode", "PicDilate", "PicOpen", "PicClose",
          "PicWhiteTopHat", "PicBlackTopHat", "PicThin", "PicThick"}) {
      made[name] = &kNonlinearFamily;
    }
    for (const char* const name :
         {"PicThreshold", "PicDoubleThreshold", "PicAutoThreshold", "PicAutoAdaptiveThreshold"}) {
      made[name] = &kThresholdingFamily;
    }
    for (const char* const name : {"PicLinearTransform", "PicScaleRotate", "PicRegister"}) {
      made[name] = &kResamplingFamily;
    }
    for (const char* const name :
         {"PicProjectOnARow", "PicProjectOnAColumn", "PicFocusing", "PicCorrelogram",
          "PicLinearRegression", "PicRmsNoise", "PicSignalNoiseRatio"}) {
      made[name] = &kMeasureFamily;
    }
    for (const char* const name : {"PicContour", "PicImageToPath", "PicPathToImage"}) {
      made[name] = &kContourFamily;
    }
    for (const char* const name :
         {"PicLineSegToVect", "PicVectToLineSeg", "PicTransitionScan", "PicGetVectTransition",
          "PicConvolVect", "PicGetVectExtremes", "PicVectDataShift"}) {
      made[name] = &kSegmentVectorFamily;
    }
    for (const char* const name :
         {"PicModulusImage", "PicArgumentImage", "PicGradientVector", "PicGradientScalar",
          "PicComplexModulus", "PicComplexRescaledModulus", "PicComplexArgument",
          "PicComplexDiscEnergy"}) {
      made[name] = &kGradientImageFamily;
    }
    return made;
  }();
  static const std::map<std::string, const Family*> families = {
      {"colour", &kPointFamily},
      {"point", &kPointFamily},
      {"convolution", &kConvolutionFamily},
      {"histogram", &kHistogramFamily},
      {"morphology", &kMorphologyFamily},
      {"geometry", &kGeometryFamily},
      {"measure", &kStatisticsFamily},
      {"correction", &kCorrectionFamily},
      {"sequence", &kSequenceFamily},
      {"profile", &kProfileFamily},
      {"frequency", &kFrequencyFamily}};
  const auto own = functions.find(operation.function);
  const Family& family = *families.at(operation.family);
  if (own == functions.end()) return family;
  // Profiles are eroded and dilated like images.
  const bool isProfile = &family == &kProfileFamily && own->second == &kNonlinearFamily;
  return isProfile ? family : *own->second;
}

}  // namespace lx::bench
