// SPDX-License-Identifier: Apache-2.0
// The sizes and kernels with which neighbourhood operations are timed.
#include <algorithm>
#include <array>

#include "bench/subject.h"
#include "support/trial/kernels.h"

namespace lx::bench {

namespace {

Form Sized(const char* label, double halfX, double halfY) {
  return {label, -1, {halfX, halfY}, {}};
}

Form WithKernel(const char* label, std::shared_ptr<LxKernel> kernel) {
  return {label, -1, {}, std::move(kernel)};
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
        Sized("101x101", 50, 50)}},
      {"PicConvolGaussian",
       {Sized("3x3", 1, 1), Sized("3x1", 1, 0), Sized("1x3", 0, 1), Sized("5x5", 2, 2),
        Sized("7x7", 3, 3)}},
      {"PicLocalAverage", {Sized("5x5", 2, 2), Sized("101x101", 50, 50)}},
      {"PicLocalDeviation", {Sized("3x3", 1, 1), Sized("5x5", 2, 2), Sized("101x101", 50, 50)}},
      {"PicConvolKernel", KernelForms()},
      {"PicConvolSymmetricKernel", SymmetricForms()}};
  return all;
}

// Enough of them to see what working in place costs.
constexpr std::array<std::string_view, 4> kAlsoInPlace = {"PicConvolSobelX", "PicConvolSobel",
                                                          "PicConvolLowpass1", "PicConvolGradient"};

}  // namespace

std::vector<Form> ConvolutionForms(const Operation& operation) {
  for (const FunctionForms& each : AllForms()) {
    if (each.function == operation.function) return each.forms;
  }
  if (std::count(kAlsoInPlace.begin(), kAlsoInPlace.end(), operation.function) == 0) return {};
  Form inPlace;
  inPlace.label = "in place";
  inPlace.inPlace = true;
  return {Form{}, inPlace};
}

}  // namespace lx::bench
