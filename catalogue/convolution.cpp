// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"
#include "convolution/filter_list.h"

namespace lx::catalogue {

namespace {

constexpr std::string_view kParameters = "source >destination?'in place'";
constexpr std::string_view kApart = "source >destination";
constexpr std::string_view kWithKernel = "source >destination kernel";
constexpr std::string_view kWithKernelOrInPlace = "source >destination?'in place' kernel";
// Small sizes, sizes around the images' own, and beyond.
#define LX_BOX_SIZE                                          \
  " half-x~2,1,0,1,3,4,7,12,50,128,129,300,4294967294:0..50" \
  " half-y=4294967295'as half-x'~4294967295,1,0,1,2,3,4,7,12,50,128,129,300,4294967294:0..50"
constexpr std::string_view kBox = "source >destination" LX_BOX_SIZE;
constexpr std::string_view kBoxOrInPlace = "source >destination?'in place'" LX_BOX_SIZE;
#undef LX_BOX_SIZE
constexpr std::string_view kPasses =
    "source >destination?'in place' half-x~2,1,0,1,3,4,7:0..12 half-y=4294967295'as "
    "half-x'~4294967295,0,1,2,3,4,7:0..12";

constexpr std::string_view kWindow = "half-x half-y";

// Sizes that have rules of their own run in place.
bool IsSmallBox(const Arguments& arguments) {
  const double halfX = std::get<double>(arguments[2]);
  const double halfY = std::get<double>(arguments[3]);
  return halfX <= 1 && (halfY <= 1 || halfY == 4294967295.0);
}

bool IsPositive3x3(const Arguments& arguments) {
  LxKernel& kernel = *std::get<LxKernel*>(arguments[2]);
  return kernel.GetSizeX() == 3 && kernel.GetSizeY() == 3 &&
         kernel.GetRectifier() == RECTIFIER_POSITIVE;
}

// Of the plain path of grey images, by the name of the border.
constexpr std::string_view kZeroDifference = "apart from in place, its neighbours outside are 0";
constexpr std::string_view kReplicateDifference;

// The three overloads of a filter from a source to a destination.
#define LX_FILTER_ROWS(function, rule, border, name, text)                                      \
  LX_FORM(function, void(LxROI<LxBW8>*, LxROI<LxBW8>*), .trace = name " (BW8)",                 \
          .parameters = kParameters, .summary = (text), .inPlace = InPlace::kYes, .reach = "1", \
          .pathsDiffer = border##Difference),                                                   \
      LX_FORM(function, void(LxROI<LxBW16>*, LxROI<LxBW16>*), .trace = name " (BW16)",          \
              .parameters = kParameters, .summary = (text), .inPlace = InPlace::kYes,           \
              .reach = "1"),                                                                    \
      LX_FORM(function, void(LxROI<LxC24>*, LxROI<LxC24>*), .trace = #function " ( C24)",       \
              .parameters = kParameters, .summary = (text), .inPlace = InPlace::kYes,           \
              .reach = "1"),
#define LX_NO_ROWS(rule, border)

const std::vector<Group> kFilters = {
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_FILTERS(LX_FILTER_ROWS, LX_NO_ROWS)
          LX_FORM(PicConvolRoberts, void(LxROI<LxC24>*, LxROI<LxC24>*),
                  .trace = "PicConvolRoberts ( C24)", .parameters = kParameters,
                  .summary = "Roberts cross", .inPlace = InPlace::kYes, .reach = "1"),
      LX_FORM(PicConvolUniform3x3, void(LxROI<LxBW8>*, LxROI<LxBW8>*),
              .trace = "PicConvolUniform3x3 (BW8)", .parameters = kParameters,
              .summary = "Mean of nine", .inPlace = InPlace::kYes, .reach = "1"),
      LX_FORM(PicConvolGaussian3x3, void(LxROI<LxBW8>*, LxROI<LxBW8>*),
              .trace = "PicConvolGaussian3x3 (BW8)", .parameters = kParameters,
              .summary = "Binomial 1 2 1", .inPlace = InPlace::kYes, .reach = "1")}},
    {{{LX_ERROR_ALLOCATION_FAILED}, {LX_ERROR_DESTINATION_IS_SOURCE}},
     {LX_FORM(PicConvolRoberts, void(LxROI<LxBW8>*, LxROI<LxBW8>*), .trace = "PicConvolRoberts",
              .parameters = kApart, .summary = "Roberts cross", .inPlace = InPlace::kRefused,
              .reach = "1"),
      LX_FORM(PicConvolRoberts, void(LxROI<LxBW16>*, LxROI<LxBW16>*),
              .trace = "PicConvolRoberts (BW16)", .parameters = kApart, .summary = "Roberts cross",
              .inPlace = InPlace::kRefused, .reach = "1"),
      LX_FORM(PicConvolUniform5x5, void(LxROI<LxBW8>*, LxROI<LxBW8>*), .trace = "ConvolUniform5x5",
              .parameters = kApart, .summary = "Mean of 25", .inPlace = InPlace::kRefused,
              .reach = "2"),
      LX_FORM(PicConvolUniform7x7, void(LxROI<LxBW8>*, LxROI<LxBW8>*),
              .trace = "PicConvolUniform7x7", .parameters = kApart, .summary = "Mean of 49",
              .inPlace = InPlace::kRefused, .reach = "3"),
      LX_FORM(PicConvolGaussian5x5, void(LxROI<LxBW8>*, LxROI<LxBW8>*),
              .trace = "ConvolGaussian5x5", .parameters = kApart, .summary = "Binomial 1 4 6 4 1",
              .inPlace = InPlace::kRefused, .reach = "2"),
      LX_FORM(PicConvolGaussian7x7, void(LxROI<LxBW8>*, LxROI<LxBW8>*),
              .trace = "PicConvolGaussian7x7", .parameters = kApart,
              .summary = "Binomial 1 6 15 20 15 6 1", .inPlace = InPlace::kRefused,
              .reach = "3")}}};

#undef LX_NO_ROWS
#undef LX_FILTER_ROWS

// What the steps of a box mean and of a Gaussian trace; those of colours are those of bytes.
constexpr std::string_view kUniformSteps =
    "PicConvolUniformX (BW8) | ConvolUniformY (BW8) | PicConvolUniform3x3 (BW8)";
constexpr std::string_view kUniformWordSteps =
    "PicConvolUniformX (BW16) | ConvolUniformY (BW16) | PicConvolUniform3x3 (BW16)";
constexpr std::string_view kGaussianSteps =
    "PicConvolGaussianX (BW8) | PicConvolGaussianY (BW8) | PicConvolGaussian3x3 (BW8)";
constexpr std::string_view kGaussianWordSteps =
    "PicConvolGaussianX (BW16) | PicConvolGaussianY (BW16) | PicConvolGaussian3x3 (BW16)";

#define LX_SIZED(function, pixel, ...) \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, unsigned, unsigned), __VA_ARGS__)
#define LX_BOX(function, pixel, text, steps)                                                      \
  LX_SIZED(function, pixel, .trace = (text), .innerTraces = (steps), .parameters = kBoxOrInPlace, \
           .summary = "Mean over a box", .inPlace = InPlace::kSometimes,                          \
           .worksInPlace = &IsSmallBox, .reach = kWindow)
#define LX_GAUSSIAN(pixel, text, steps)                                        \
  LX_SIZED(PicConvolGaussian, pixel, .trace = (text), .innerTraces = (steps),  \
           .parameters = kPasses, .summary = "Binomial smoothing of any size", \
           .inPlace = InPlace::kYes, .reach = kWindow)

const std::vector<Group> kSmoothing = {
    {{{LX_ERROR_ALLOCATION_FAILED}, {LX_ERROR_DESTINATION_IS_SOURCE}},
     {LX_BOX(PicConvolUniform, LxBW8, "PicConvolUniform", kUniformSteps),
      LX_BOX(PicConvolUniform, LxBW16, "PicConvolUniform (BW16)", kUniformWordSteps),
      LX_BOX(PicLocalAverage, LxBW8, "PicLocalAverage", kUniformSteps),
      LX_BOX(PicLocalAverage, LxBW16, "PicLocalAverage (BW16)", kUniformWordSteps),
      LX_SIZED(PicLocalDeviation, LxBW8, .trace = "PicLocalDeviation", .parameters = kBox,
               .summary = "Standard deviation over a box", .inPlace = InPlace::kRefused,
               .reach = kWindow),
      LX_SIZED(PicLocalDeviation, LxBW16, .trace = "PicLocalDeviation (BW16)", .parameters = kBox,
               .summary = "Standard deviation over a box", .inPlace = InPlace::kRefused,
               .reach = kWindow)}},
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_SIZED(PicConvolUniform, LxC24, .trace = "PicConvolUniform ( C24)",
               .innerTraces = kUniformSteps, .parameters = kBoxOrInPlace,
               .summary = "Mean over a box", .inPlace = InPlace::kYes, .reach = kWindow),
      LX_GAUSSIAN(LxBW8, "PicConvolGaussian", kGaussianSteps),
      LX_GAUSSIAN(LxBW16, "PicConvolGaussian (BW16)", kGaussianWordSteps),
      LX_GAUSSIAN(LxC24, "PicConvolGaussian ( C24)", kGaussianSteps)}}};

#undef LX_GAUSSIAN
#undef LX_BOX
#undef LX_SIZED

#define LX_KERNEL_FORM(function, pixel, ...) \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, LxKernel*), __VA_ARGS__, .reach = "kernel")
#define LX_ANY_KERNEL(pixel, name, steps)                                         \
  LX_KERNEL_FORM(PicConvolKernel, pixel, .trace = (name), .innerTraces = (steps), \
                 .parameters = kWithKernelOrInPlace, .summary = "Any kernel",     \
                 .inPlace = InPlace::kSometimes, .worksInPlace = &IsPositive3x3)
#define LX_SYMMETRIC_KERNEL(pixel, name, steps)                                             \
  LX_KERNEL_FORM(PicConvolSymmetricKernel, pixel, .trace = (name), .innerTraces = (steps),  \
                 .parameters = kWithKernel, .summary = "Symmetric kernel, from its octant", \
                 .inPlace = InPlace::kRefused)

const std::vector<Group> kKernels = {
    {{{LX_ERROR_KERNEL_NO_DATA},
      {LX_ERROR_UNSUPPORTED_KERNEL_SIZE},
      {LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_ANY_KERNEL(LxBW8, "PicConvolKernel BW8",
                    "ConvolKernel3x3 | ConvolKernel5x5 | ConvolKernel7x7"),
      LX_ANY_KERNEL(LxBW16, "PicConvolKernel BW16",
                    "ConvolKernel3x3 BW16 | ConvolKernel5x5 BW16 | ConvolKernel7x7 BW16")}},
    {{{LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_KERNEL_NO_DATA},
      {LX_ERROR_UNSUPPORTED_KERNEL_SIZE},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_KERNEL_FORM(PicConvolKernel, LxC24, .trace = "PicConvolKernel ( C24)",
                     .innerTraces = "PicConvolKernel BW8 | ConvolKernel3x3 < PicConvolKernel BW8 | "
                                    "ConvolKernel5x5 < PicConvolKernel BW8 | ConvolKernel7x7 < "
                                    "PicConvolKernel BW8",
                     .parameters = kWithKernel, .summary = "Any kernel",
                     .inPlace = InPlace::kRefused)}},
    {{{LX_ERROR_KERNEL_NO_DATA},
      {LX_ERROR_KERNEL_RECTIFIER},
      {LX_ERROR_UNSUPPORTED_KERNEL_SIZE},
      {LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_SIZE_MISMATCH},
      {LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_SYMMETRIC_KERNEL(LxBW8, "PicConvolSymmetricKernel",
                          "ConvolKernelS3xS3 | ConvolKernelS5xS5 | ConvolKernelS7xS7"),
      LX_SYMMETRIC_KERNEL(
          LxBW16, "PicConvolSymmetricKernel BW16",
          "ConvolKernelS3xS3 BW16 | ConvolKernelS5xS5 BW16 | ConvolKernelS7xS7 (BW16)")}},
    {{{LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_KERNEL_NO_DATA},
      {LX_ERROR_KERNEL_RECTIFIER},
      {LX_ERROR_UNSUPPORTED_KERNEL_SIZE},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_SYMMETRIC_KERNEL(LxC24, "PicConvolSymmetricKernel ( C24)",
                          "PicConvolSymmetricKernel | ConvolKernelS3xS3 < PicConvolSymmetricKernel "
                          "| ConvolKernelS5xS5 < PicConvolSymmetricKernel | ConvolKernelS7xS7 < "
                          "PicConvolSymmetricKernel")}}};

#undef LX_SYMMETRIC_KERNEL
#undef LX_ANY_KERNEL
#undef LX_KERNEL_FORM

}  // namespace

std::vector<Operation> ConvolutionOperations() {
  std::vector<Operation> all;
  for (const auto* const groups : {&kFilters, &kSmoothing, &kKernels}) {
    for (Operation& each : Describe("convolution", *groups)) all.push_back(std::move(each));
  }
  return all;
}

}  // namespace lx::catalogue
