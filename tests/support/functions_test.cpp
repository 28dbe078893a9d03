// SPDX-License-Identifier: Apache-2.0
// Everything that the library offers, by name: nothing is missing, misspelt or half there.
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "support/every_operation.h"
#include "support/reference.h"

namespace lx::test {
namespace {

// Names, each with the number of its overloads.
constexpr const char* kFunctions =
    "PicAnalyseHistogram 3 PicAnalyseHistogramBW16 1 PicArea 4 PicAreaDoubleThreshold 2 "
    "PicArgumentImage 1 PicAutoAdaptiveThreshold 1 PicAutoThreshold 2 PicAverage 1 "
    "PicBinaryMoments 4 PicBlackTopHat 2 PicBlackTopHatBox 3 PicBlackTopHatDisk 3 PicCentroid 1 "
    "PicClose 2 PicCloseBox 3 PicCloseDisk 3 PicComplexArgument 1 PicComplexDiscEnergy 1 "
    "PicComplexModulus 1 PicComplexRescaledModulus 1 PicContour 5 PicConvert 20 "
    "PicConvertTo422 1 PicConvolGaussian 5 PicConvolGaussian3x3 1 PicConvolGaussian5x5 1 "
    "PicConvolGaussian7x7 1 PicConvolGradient 3 PicConvolGradientX 3 PicConvolGradientY 3 "
    "PicConvolHighpass1 3 PicConvolHighpass2 3 PicConvolKernel 3 PicConvolLaplacian4 3 "
    "PicConvolLaplacian8 3 PicConvolLaplacianX 3 PicConvolLaplacianY 3 PicConvolLowpass1 3 "
    "PicConvolLowpass2 3 PicConvolLowpass3 3 PicConvolPrewitt 3 PicConvolPrewittX 3 "
    "PicConvolPrewittY 3 PicConvolRoberts 3 PicConvolSobel 3 PicConvolSobelX 3 PicConvolSobelY 3 "
    "PicConvolSymmetricKernel 3 PicConvolUniform 5 PicConvolUniform3x3 1 PicConvolUniform5x5 1 "
    "PicConvolUniform7x7 1 PicConvolVect 1 PicCopy 10 PicCorrelogram 2 PicCount 3 PicDilate 4 "
    "PicDilateBox 3 PicDilateDisk 3 PicDistance 1 PicDoubleThreshold 2 PicEqualize 2 PicErode 4 "
    "PicErodeBox 3 PicErodeDisk 3 PicFastDFT 1 PicFocusing 3 PicGainOffset 3 PicGetFrame 3 "
    "PicGetOverlayColor 1 PicGetProfilePeaks 2 PicGetVectExtremes 2 PicGetVectTransition 2 "
    "PicGradientScalar 2 PicGradientVector 1 PicGravityCenter 2 PicHalve 1 PicHistogram 4 "
    "PicHistogramCenteredMoments 1 PicHistogramMoments 1 PicHistogramThreshold 1 "
    "PicHistogramThresholdBW16 1 PicHorizontalMirror 3 PicImageToLineSegment 3 PicImageToPath 3 "
    "PicInertia 2 PicIsodataThreshold 2 PicIsodataThresholdBW16 1 PicLineSegToVect 1 "
    "PicLineSegmentToImage 6 PicLinearRegression 1 PicLinearTransform 3 PicLocalAverage 2 "
    "PicLocalDeviation 2 PicLut 5 PicMatchFrames 3 PicMaxEntropyThreshold 1 PicMaximum 1 "
    "PicMedian 4 PicMinResidueThreshold 1 PicMinimum 1 PicModulusImage 1 PicMorphoGradientBox 3 "
    "PicMorphoGradientDisk 3 PicNormalize 2 PicOpen 2 PicOpenBox 3 PicOpenDisk 3 PicOper 21 "
    "PicOverlay 2 PicPathToImage 3 PicPixelAverage 3 PicPixelCompare 3 PicPixelCount 2 "
    "PicPixelMax 2 PicPixelMin 2 PicPixelStat 2 PicPixelStdDev 3 PicPixelVariance 3 "
    "PicProfileDerivative 2 PicProjectOnAColumn 6 PicProjectOnARow 6 PicRealignFrame 3 "
    "PicRebuildFrame 3 PicRecursiveAverage 1 PicRegister 9 PicRmsNoise 4 PicScaleRotate 5 "
    "PicSetCircleWarp 1 PicSetFrame 3 PicSetOverlayColor 1 PicSetRecursiveAverageLUT 1 "
    "PicSetupEqualize 2 PicShrink 3 PicSignalNoiseRatio 4 PicSlowDFT 1 PicSwapFrames 3 "
    "PicThick 3 PicThin 3 PicThreshold 7 PicTransform 2 PicTransitionScan 1 PicUniformize 12 "
    "PicVariance 1 PicVect1c2 2 PicVectDataShift 1 PicVectToLineSeg 2 PicVerticalMirror 3 "
    "PicWarp 3 PicWeightedMoments 8 PicWhiteTopHat 2 PicWhiteTopHatBox 3 PicWhiteTopHatDisk 3 "
    "TintGetComponent 1 TintSetComponent 1 ";

std::map<std::string, int> Functions() {
  std::map<std::string, int> functions;
  std::istringstream words(kFunctions);
  std::string name;
  for (int overloads = 0; words >> name >> overloads;) functions[name] = overloads;
  return functions;
}

std::string TextUnder(const std::string& folder, const std::string& extension) {
  std::ostringstream text;
  for (const auto& file : std::filesystem::recursive_directory_iterator(folder)) {
    if (file.path().extension() == extension) text << std::ifstream(file.path()).rdbuf();
  }
  return text.str();
}

TEST(Functions, AreAllThereWithReferences) {
  auto missing = Functions();
  for (const Operation& operation : catalogue::All()) {
    --missing[operation.function];
    EXPECT_TRUE(FindReference(operation.signature) != nullptr ||
                !WhyNoReference(operation.signature).empty())
        << operation.signature;
  }
  for (const auto& [name, count] : missing) EXPECT_EQ(count, 0) << name;
}

// The table of benchmarks has a row for what computes something.
TEST(Functions, AreDeclaredToldAndTimed) {
  const std::string headers = TextUnder(LXPIC_SOURCE_DIR "/include", ".h");
  const std::string documents = TextUnder(LXPIC_SOURCE_DIR "/docs", ".md");
  for (const auto& [name, overloads] : Functions()) {
    const std::string call = name + "(";
    EXPECT_NE(headers.find(" " + call), std::string::npos) << name;
    const bool computes = name.find("OverlayColor") == std::string::npos;
    const std::string told = computes ? "| `" + call : name;
    EXPECT_NE(documents.find(told), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace lx::test
