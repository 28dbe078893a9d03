// SPDX-License-Identifier: Apache-2.0
// Filters, smoothing and kernels.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/imgproc.hpp>

#include "bench/opencv.h"
#endif

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "bench/family.h"
#include "support/trial/kernels.h"

namespace lx::bench {

namespace {

Form Sized(const char* label, double halfX, double halfY) {
  return {.label = label, .numbers = {{"half-x", halfX}, {"half-y", halfY}}};
}

Form WithKernel(const char* label, std::shared_ptr<LxKernel> kernel) {
  return {.label = label, .kernel = std::move(kernel)};
}

// Positive weights without symmetry, so that nothing is saved.
std::shared_ptr<LxKernel> KernelOf(int size, short rectifier) {
  std::vector<float> coefficients;
  for (int i = 0; i < size * size; ++i) coefficients.push_back(static_cast<float>(1 + i * 5 % 13));
  auto kernel = test::MakeKernel(size, coefficients);
  kernel->SetRectifier(rectifier);
  return kernel;
}

std::vector<Form> KernelForms() {
  return {WithKernel("3x3 positive", KernelOf(3, RECTIFIER_POSITIVE)),
          WithKernel("3x3 absolute", KernelOf(3, RECTIFIER_ABSOLUTE)),
          WithKernel("3x3 real", KernelOf(3, RECTIFIER_NONE)),
          WithKernel("5x5", KernelOf(5, RECTIFIER_POSITIVE)),
          WithKernel("7x7", KernelOf(7, RECTIFIER_POSITIVE)),
          WithKernel("9x9 real", KernelOf(9, RECTIFIER_POSITIVE))};
}

std::vector<Form> SymmetricForms() {
  return {WithKernel("3x3", KernelOf(3, RECTIFIER_POSITIVE)),
          WithKernel("5x5", KernelOf(5, RECTIFIER_POSITIVE)),
          WithKernel("7x7", KernelOf(7, RECTIFIER_POSITIVE))};
}

struct FunctionForms {
  std::string_view function;
  std::vector<Form> forms;
};

const std::vector<FunctionForms>& AllForms() {
  static const std::vector<FunctionForms> all = {
      {"PicConvolUniform",
       {Sized("3x3", 1, 1), Sized("3x1", 1, 0), Sized("1x3", 0, 1), Sized("5x5", 2, 2),
        Sized("15x15", 7, 7), Sized("101x101", 50, 50)}},
      {"PicConvolGaussian",
       {Sized("3x3", 1, 1), Sized("3x1", 1, 0), Sized("1x3", 0, 1), Sized("5x5", 2, 2),
        Sized("7x7", 3, 3)}},
      {"PicLocalAverage", {Sized("5x5", 2, 2), Sized("101x101", 50, 50)}},
      {"PicLocalDeviation", {Sized("3x3", 1, 1), Sized("7x7", 3, 3), Sized("101x101", 50, 50)}},
      {"PicConvolKernel", KernelForms()},
      {"PicConvolSymmetricKernel", SymmetricForms()}};
  return all;
}

// Enough of them to see what working in place costs.
constexpr std::array<std::string_view, 4> kAlsoInPlace = {"PicConvolSobelX", "PicConvolSobel",
                                                          "PicConvolLowpass1", "PicConvolGradient"};

std::vector<Form> FormsOf(const Operation& operation) {
  for (const FunctionForms& each : AllForms()) {
    if (each.function == operation.function) return each.forms;
  }
  if (std::count(kAlsoInPlace.begin(), kAlsoInPlace.end(), operation.function) == 0) return {};
  return {Form{}, Form{.label = "in place", .inPlace = true}};
}

using catalogue::Pixel;

constexpr std::array kTargets = {
    TargetRow{"PicConvolSobelX", "", Pixel::kBW8, {{0.14, 0.16}, {0.28, 0.35}}},
    TargetRow{"PicConvolSobelY", "", Pixel::kBW8, {{0.14, 0.16}, {0.28, 0.35}}},
    TargetRow{"PicConvolSobel", "", Pixel::kBW8, {{0.14, 0.15}, {0.27, 0.26}}},
    TargetRow{"PicConvolSobel", "", Pixel::kBW16, {{0.11, 0.11}}},
    TargetRow{"PicConvolPrewitt", "", Pixel::kBW8, {{0.09, 0.09}}},
    TargetRow{"PicConvolLaplacian8", "", Pixel::kBW8, {{0.07, 0.07}, {0.13, 0.17}}},
    TargetRow{"PicConvolHighpass1", "", Pixel::kBW8, {{0.08, 0.08}}},
    TargetRow{"PicConvolHighpass2", "", Pixel::kBW8, {{0.08, 0.08}}},
    TargetRow{"PicConvolLowpass1", "", Pixel::kBW8, {{0.085, 0.1}, {0.13, 0.18}}},
    TargetRow{"PicConvolUniform3x3", "", Pixel::kBW8, {{0.085, 0.1}, {0.13, 0.18}}},
    TargetRow{"PicConvolUniform", "3x3", Pixel::kBW8, {{0.085, 0.1}, {0.13, 0.18}}},
    TargetRow{"PicConvolLowpass3", "", Pixel::kBW8, {{0.18, 0.2}, {0.23, 0.27}}},
    TargetRow{"PicConvolGaussian3x3", "", Pixel::kBW8, {{0.18, 0.2}, {0.23, 0.27}}},
    TargetRow{"PicConvolGaussian", "3x3", Pixel::kBW8, {{0.18, 0.2}, {0.23, 0.27}}},
    TargetRow{"PicConvolLowpass3", "", Pixel::kBW16, {{0.26, 0.26}}},
    TargetRow{"PicConvolLowpass3", "", Pixel::kC24, {{0.19, 0.31}, {0.26, 0.33}}},
    TargetRow{"PicConvolGaussian", "3x3", Pixel::kBW16, {{0.26, 0.26}}},
    TargetRow{"PicConvolGaussian", "3x3", Pixel::kC24, {{0.19, 0.31}, {0.26, 0.33}}},
    TargetRow{"PicConvolGaussian5x5", "", Pixel::kBW8, {{0.27, 0.27}, {0.7, 0.69}}},
    TargetRow{"PicConvolGaussian", "5x5", Pixel::kBW8, {{0.27, 0.27}, {0.7, 0.69}}},
    TargetRow{"PicConvolGaussian7x7", "", Pixel::kBW8, {{0.35, 0.5}, {0.61, 0.78}}},
    TargetRow{"PicConvolGaussian", "7x7", Pixel::kBW8, {{0.35, 0.5}, {0.61, 0.78}}},
    TargetRow{"PicConvolUniform5x5", "", Pixel::kBW8, {{0.11, 0.11}}},
    TargetRow{"PicConvolUniform", "5x5", Pixel::kBW8, {{0.11, 0.11}}},
    TargetRow{"PicConvolUniform", "15x15", Pixel::kBW8, {{0.22, 0.22}}},
    TargetRow{"PicConvolUniform", "5x5", Pixel::kBW16, {{0.28, 0.28}}},
    TargetRow{"PicLocalDeviation", "7x7", Pixel::kBW8, {{0.2, 0.2}}},
    TargetRow{"PicLocalDeviation", "7x7", Pixel::kBW16, {{0.42, 0.3}}},
    TargetRow{"PicConvolKernel", "3x3 positive", Pixel::kBW8, {{0.4, 0.5}}},
    TargetRow{"PicConvolKernel", "3x3 absolute", Pixel::kBW8, {{0.4, 0.5}}},
    TargetRow{"PicConvolKernel", "5x5", Pixel::kBW8, {{0.3, 0.3}}},
    TargetRow{"PicConvolKernel", "7x7", Pixel::kBW8, {{0.28, 0.28}}},
    TargetRow{"PicConvolKernel", "3x3 positive", Pixel::kBW16, {{0.25, 0.25}}},
    TargetRow{"PicConvolKernel", "3x3 real", Pixel::kBW8, {{0.72, 0.85}}}};

Target TargetOf(const Subject& subject) { return FindTarget(subject, kTargets); }

#ifdef LXPIC_HAS_OPENCV

constexpr int kBorder = cv::BORDER_REPLICATE;

// What a peer works on. The scratch images keep their memory from call to call.
struct Scene {
  cv::Mat source;
  cv::Mat destination;
  std::array<cv::Mat, 4> scratch;
  cv::Size window;
  cv::Mat kernel;
  bool absolute = false;

  // Signed results of the source's pixels.
  int SignedDepth() const { return source.depth() == CV_8U ? CV_16S : CV_32F; }
};

using Peer = void (*)(Scene&);

// to = saturated(|from|)
void TakeMagnitude(Scene& scene, const cv::Mat& from, cv::Mat& to) {
  if (scene.source.depth() == CV_8U) return cv::convertScaleAbs(from, to);
  cv::absdiff(from, cv::Scalar::all(0), scene.scratch[3]);
  scene.scratch[3].convertTo(to, CV_16U);
}

template <int kX, int kY, int kSize>
void Derive(Scene& scene) {
  cv::Sobel(scene.source, scene.scratch[0], scene.SignedDepth(), kX, kY, kSize, 1, 0, kBorder);
  TakeMagnitude(scene, scene.scratch[0], scene.destination);
}

// Both magnitudes, added up.
template <int kSize>
void DeriveTwice(Scene& scene) {
  cv::Mat& signedResult = scene.scratch[0];
  for (const bool vertical : {false, true}) {
    cv::Sobel(scene.source, signedResult, scene.SignedDepth(), vertical ? 0 : 1, vertical ? 1 : 0,
              kSize, 1, 0, kBorder);
    TakeMagnitude(scene, signedResult, scene.scratch[vertical ? 2 : 1]);
  }
  cv::add(scene.scratch[1], scene.scratch[2], scene.destination);
}

const cv::Matx13f kOnes(1, 1, 1);
const cv::Matx13f kDifference(-1, 0, 1);

template <bool kVertical>
void Prewitt(Scene& scene, cv::Mat& to) {
  cv::sepFilter2D(scene.source, scene.scratch[0], scene.SignedDepth(),
                  kVertical ? kOnes : kDifference, kVertical ? kDifference : kOnes,
                  cv::Point(-1, -1), 0, kBorder);
  TakeMagnitude(scene, scene.scratch[0], to);
}

template <bool kVertical>
void PrewittDirection(Scene& scene) {
  Prewitt<kVertical>(scene, scene.destination);
}

void PrewittGradient(Scene& scene) {
  Prewitt<false>(scene, scene.scratch[1]);
  Prewitt<true>(scene, scene.scratch[2]);
  cv::add(scene.scratch[1], scene.scratch[2], scene.destination);
}

template <int... kWeights>
void Filter(Scene& scene) {
  static const cv::Matx33f kernel(kWeights...);
  cv::filter2D(scene.source, scene.scratch[0], scene.SignedDepth(), kernel, cv::Point(-1, -1), 0,
               kBorder);
  TakeMagnitude(scene, scene.scratch[0], scene.destination);
}

void RingMean(Scene& scene) {
  static const cv::Matx33f kernel(0.125F, 0.125F, 0.125F, 0.125F, 0, 0.125F, 0.125F, 0.125F,
                                  0.125F);
  cv::filter2D(scene.source, scene.destination, -1, kernel, cv::Point(-1, -1), 0, kBorder);
}

// All but the last row and column.
void Roberts(Scene& scene) {
  const cv::Mat& s = scene.source;
  const cv::Size inner(s.cols - 1, s.rows - 1);
  const auto corner = [&](int x, int y) { return s(cv::Rect(cv::Point(x, y), inner)); };
  cv::Mat to = scene.destination(cv::Rect(cv::Point(0, 0), inner));
  cv::absdiff(corner(1, 0), corner(0, 1), scene.scratch[0]);
  cv::absdiff(corner(0, 0), corner(1, 1), scene.scratch[1]);
  cv::add(scene.scratch[0], scene.scratch[1], to);
}

void Mean(Scene& scene) {
  cv::blur(scene.source, scene.destination, scene.window, cv::Point(-1, -1), kBorder);
}

void Binomial(Scene& scene) {
  cv::GaussianBlur(scene.source, scene.destination, scene.window, 0, 0, kBorder);
}

void Deviation(Scene& scene) {
  auto& [mean, square, spare, root] = scene.scratch;
  cv::boxFilter(scene.source, mean, CV_32F, scene.window, cv::Point(-1, -1), true, kBorder);
  cv::sqrBoxFilter(scene.source, square, CV_32F, scene.window, cv::Point(-1, -1), true, kBorder);
  cv::multiply(mean, mean, spare);
  cv::subtract(square, spare, square);
  cv::max(square, 0, square);
  cv::sqrt(square, root);
  root.convertTo(scene.destination, scene.destination.depth());
}

void UserKernel(Scene& scene) {
  cv::Mat& result = scene.absolute ? scene.scratch[0] : scene.destination;
  cv::filter2D(scene.source, result, scene.absolute ? scene.SignedDepth() : -1, scene.kernel,
               cv::Point(-1, -1), 0, kBorder);
  if (scene.absolute) TakeMagnitude(scene, result, scene.destination);
}

struct Row {
  std::string_view function;
  int window;  ///< columns and rows; 0 where the form says them
  Peer peer;
};

constexpr std::array kPeers = {
    Row{"PicConvolSobelX", 0, Derive<1, 0, 3>},
    Row{"PicConvolSobelY", 0, Derive<0, 1, 3>},
    Row{"PicConvolSobel", 0, DeriveTwice<3>},
    Row{"PicConvolPrewittX", 0, PrewittDirection<false>},
    Row{"PicConvolPrewittY", 0, PrewittDirection<true>},
    Row{"PicConvolPrewitt", 0, PrewittGradient},
    Row{"PicConvolLaplacian4", 0, Filter<0, 1, 0, 1, -4, 1, 0, 1, 0>},
    Row{"PicConvolLaplacian8", 0, Filter<1, 1, 1, 1, -8, 1, 1, 1, 1>},
    Row{"PicConvolLaplacianX", 0, Derive<2, 0, 1>},
    Row{"PicConvolLaplacianY", 0, Derive<0, 2, 1>},
    Row{"PicConvolHighpass1", 0, Filter<0, -1, 0, -1, 5, -1, 0, -1, 0>},
    Row{"PicConvolHighpass2", 0, Filter<-1, -1, -1, -1, 9, -1, -1, -1, -1>},
    Row{"PicConvolLowpass1", 3, Mean},
    Row{"PicConvolLowpass2", 0, RingMean},
    Row{"PicConvolLowpass3", 3, Binomial},
    Row{"PicConvolGradientX", 0, Derive<1, 0, 1>},
    Row{"PicConvolGradientY", 0, Derive<0, 1, 1>},
    Row{"PicConvolGradient", 0, DeriveTwice<1>},
    Row{"PicConvolRoberts", 0, Roberts},
    Row{"PicConvolUniform3x3", 3, Mean},
    Row{"PicConvolUniform5x5", 5, Mean},
    Row{"PicConvolUniform7x7", 7, Mean},
    Row{"PicConvolGaussian3x3", 3, Binomial},
    Row{"PicConvolGaussian5x5", 5, Binomial},
    Row{"PicConvolGaussian7x7", 7, Binomial},
    Row{"PicConvolUniform", 0, Mean},
    Row{"PicConvolGaussian", 0, Binomial},
    Row{"PicLocalAverage", 0, Mean},
    Row{"PicLocalDeviation", 0, Deviation},
    Row{"PicConvolKernel", 0, UserKernel},
    Row{"PicConvolSymmetricKernel", 0, UserKernel}};

// The coefficients, normalised.
cv::Mat KernelMat(LxKernel& kernel) {
  const cv::Mat view(kernel.GetSizeY(), kernel.GetSizeX(), CV_32F, kernel.GetDataPtr());
  return view / cv::sum(view)[0];
}

Scene SceneOf(const Subject& subject, int window) {
  Scene scene;
  scene.source = ViewOf(subject, 0);
  scene.destination = ViewOf(subject, 1);
  scene.window = {window, window};
  if (subject.form.numbers.size() == 2) {
    const auto side = [&](const char* half) {
      return 2 * static_cast<int>(subject.call.Number(half)) + 1;
    };
    scene.window = {side("half-x"), side("half-y")};
  }
  if (LxKernel* const kernel = subject.form.kernel.get()) {
    scene.kernel = KernelMat(*kernel);
    scene.absolute = kernel->GetRectifier() == RECTIFIER_ABSOLUTE;
  }
  return scene;
}

Job MakePeer(const Subject& subject) {
  for (const Row& row : kPeers) {
    if (row.function != subject.operation->function) continue;
    return [scene = SceneOf(subject, row.window), peer = row.peer]() mutable {
      const cv::Mat destination = scene.destination;
      peer(scene);
      ExpectResultIn(destination, scene.destination);
    };
  }
  return {};
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kConvolutionFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
