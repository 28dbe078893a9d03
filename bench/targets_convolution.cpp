// SPDX-License-Identifier: Apache-2.0
#include <string_view>
#include <vector>

#include "bench/targets.h"

namespace lx::bench {

namespace {

constexpr Target kGradient = {5.0, 2.0};
constexpr Target kDirection = {4.0, 1.6};
constexpr Target kSimple = {2.5, 1.2};
constexpr Target kBox = {8, 2.5};
constexpr Target kBinomial7 = {11, 3.5};
constexpr Target kDeviation = {20, 7};
constexpr Target kPositiveKernel = {6, 2};
constexpr Target kKernel3 = {9, 3};
constexpr Target kKernel5 = {18, 6};
constexpr Target kKernel7 = {34, 10};

// What a form may take longer than that of 8-bit images with a destination of its own, for as many
// bytes: images of 16 bits and of colours, and work in place.
constexpr double kAllowance = 1.1;

struct Row {
  std::string_view function;
  std::string_view label;  ///< of the form; "" for every form
  Target target;
};

const std::vector<Row> kRows = {{"PicConvolSobel", "", kGradient},
                                {"PicConvolPrewitt", "", kGradient},
                                {"PicConvolSobelX", "", kDirection},
                                {"PicConvolSobelY", "", kDirection},
                                {"PicConvolPrewittX", "", kDirection},
                                {"PicConvolPrewittY", "", kDirection},
                                {"PicConvolLaplacian4", "", kDirection},
                                {"PicConvolLaplacian8", "", kDirection},
                                {"PicConvolHighpass1", "", kDirection},
                                {"PicConvolHighpass2", "", kDirection},
                                {"PicConvolLowpass2", "", kDirection},
                                {"PicConvolLowpass1", "", kSimple},
                                {"PicConvolLowpass3", "", kSimple},
                                {"PicConvolUniform3x3", "", kSimple},
                                {"PicConvolGaussian3x3", "", kSimple},
                                {"PicConvolLaplacianX", "", kSimple},
                                {"PicConvolLaplacianY", "", kSimple},
                                {"PicConvolGradientX", "", kSimple},
                                {"PicConvolGradientY", "", kSimple},
                                {"PicConvolGradient", "", kSimple},
                                {"PicConvolRoberts", "", kSimple},
                                {"PicConvolUniform5x5", "", kBox},
                                {"PicConvolUniform7x7", "", kBinomial7},
                                {"PicConvolGaussian5x5", "", kBox},
                                {"PicConvolGaussian7x7", "", kBinomial7},
                                {"PicConvolUniform", "5x5", kBox},
                                {"PicConvolUniform", "101x101", kBox},
                                {"PicConvolUniform", "", kSimple},
                                {"PicConvolGaussian", "5x5", kBox},
                                {"PicConvolGaussian", "7x7", kBinomial7},
                                {"PicConvolGaussian", "", kSimple},
                                {"PicLocalAverage", "", kBox},
                                {"PicLocalDeviation", "", kDeviation},
                                {"PicConvolKernel", "3x3 positive", kPositiveKernel},
                                {"PicConvolKernel", "3x3 absolute", kKernel3},
                                {"PicConvolKernel", "3x3 real", kKernel3},
                                {"PicConvolKernel", "5x5", kKernel5},
                                {"PicConvolKernel", "7x7", kKernel7},
                                {"PicConvolSymmetricKernel", "3x3", kKernel3},
                                {"PicConvolSymmetricKernel", "5x5", kKernel5},
                                {"PicConvolSymmetricKernel", "7x7", kKernel7}};

}  // namespace

Target ConvolutionTarget(const Subject& subject) {
  double allowance = subject.images.front()->GetPixelSize() > 1 ? kAllowance : 1;
  if (subject.form.inPlace) allowance *= kAllowance;
  for (const Row& row : kRows) {
    const bool isForm = row.label.empty() || row.label == subject.form.label;
    if (row.function != subject.operation->function || !isForm) continue;
    return {allowance * row.target.computing, allowance * row.target.memory};
  }
  return {0, 0};
}

}  // namespace lx::bench
