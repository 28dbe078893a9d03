// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

// Every mode, thresholds, and a value that is neither.
#define LX_THRESHOLD(largest, beyond)                  \
  "threshold~4294967292,128,0,1," #largest "," #beyond \
  ",4294967293,4294967290,4294967288,4294967289,4294967291:0.." #largest "{PIC_THRESHOLD_MODES} "
constexpr std::string_view kModes =
    "source mode{4294967288-4294967293} relative=0.5~0.5,0,1,-0.1:0..1 "
    "threshold";
#define LX_RELATIVE "relative=0.5~0.5,0,1,0.1,-0.1:0..1"

// What counting the levels of an image, and choosing among them, may trace.
constexpr std::string_view kByteSteps =
    "LxVector::SetMaxElements | PicHistogram | PicHistogramThreshold";
constexpr std::string_view kWordSteps = "LxVector::SetMaxElements | PicHistogramThreshold (BW16)";

constexpr const char* kAllLow = "the image, all of it low";
constexpr const char* kAllClear = "the image, all of it clear";
constexpr const char* kUntilThrown = "what was done until the lookup threw";

const std::vector<Group> kGroups = {
    {{},
     {LX_FORM(PicThreshold, void(LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned, LxBW8, LxBW8, float),
              .trace = "PicThreshold", .innerTraces = kByteSteps,
              .parameters = "source >destination " LX_THRESHOLD(
                  255, 256) "low-value high-value~255 " LX_RELATIVE,
              .summary = "Two levels, on either side of a threshold", .inPlace = InPlace::kYes,
              .reach = "all", .followsRuns = true,
              .refusals = {{LX_ERROR_INCONSISTENT_ARGUMENTS},
                           {LX_ERROR_ALLOCATION_FAILED},
                           {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE, kAllLow},
                           {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE, kAllLow}}),
      LX_FORM(PicThreshold, void(LxROI<LxBW16>*, LxROI<LxBW16>*, unsigned, LxBW16, LxBW16, float),
              .trace = "PicThreshold (BW16)", .innerTraces = kWordSteps,
              .parameters = "source >destination " LX_THRESHOLD(
                  65535, 65536) "low-value high-value~65535 " LX_RELATIVE,
              .summary = "Two levels, on either side of a threshold", .inPlace = InPlace::kYes,
              .reach = "all",
              .refusals = {{LX_ERROR_ALLOCATION_FAILED},
                           {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE, kAllLow},
                           {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE, kAllLow}}),
      LX_FORM(PicThreshold, void(LxROI<LxBW16>*, LxROI<int>*, unsigned, float),
              .trace = "PicThreshold (BW16 to BW1)", .innerTraces = kWordSteps,
              .parameters = "source >destination " LX_THRESHOLD(65535, 65536) LX_RELATIVE,
              .summary = "A binary image: pixels from a threshold on are set", .reach = "all",
              .refusals = {{LX_ERROR_ALLOCATION_FAILED},
                           {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE, kAllClear},
                           {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE, kAllClear}}),
      LX_FORM(PicThreshold, void(LxROI<LxBW8>*, LxROI<int>*, unsigned),
              .trace = "PicThreshold ( BW8 to BW1)",
              .parameters = "source >destination threshold~128,0,1,255,256,4294967295:0..255",
              .summary = "A binary image: pixels from a threshold on are set"),
      LX_FORM(PicThreshold, void(LxROI<int>*, LxROI<LxBW8>*, LxBW8, LxBW8),
              .trace = "PicThreshold ( BW1 to BW8)",
              .parameters = "source >destination low-value high-value~255",
              .summary = "A grey image from a binary one"),
      LX_FORM(PicThreshold, void(LxROI<LxC24>*, LxROI<LxBW8>*, LxC24, LxC24),
              .trace = "PicThreshold ( C24 to BW8)",
              .parameters = "source >destination min-color~60 max-color~200",
              .summary = "255 for colours in a box, 0 for others"),
      LX_FORM(PicThreshold,
              void(LxROI<LxC24>*, LxROI<LxBW8>*, LxC24, LxC24, LxColorLookup*, LxBW8, LxBW8),
              .trace = "PicThreshold ( C24 to BW8)",
              .parameters = "source >destination min-color~60 max-color~200 "
                            "lookup?'colours as they are' out-value in-value~255",
              .summary = "Two levels, for colours outside and inside a box",
              .refusals = {{LX_ERROR_ALLOCATION_FAILED, kUntilThrown},
                           {LX_ERROR_INTERNAL, kUntilThrown}}),
      LX_FORM(PicDoubleThreshold,
              void(LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned, unsigned, LxBW8, LxBW8, LxBW8),
              .trace = "PicDoubleThreshold ( BW8 to BW8)",
              .parameters = "source >destination low-threshold~85,0,1,255,256,4294967295:0..255 "
                            "high-threshold~170,0,1,254,255,4294967295:0..255 low-value "
                            "mid-value~128 high-value~255",
              .summary = "Three levels, between two thresholds and on either side of them",
              .inPlace = InPlace::kYes),
      LX_FORM(PicDoubleThreshold,
              void(LxROI<LxBW16>*, LxROI<LxBW16>*, unsigned, unsigned, LxBW16, LxBW16, LxBW16),
              .trace = "PicDoubleThreshold ( BW16 to BW16)",
              .parameters =
                  "source >destination low-threshold~21000,0,1,65535,65536,4294967295:0..65535 "
                  "high-threshold~42000,0,1,65534,65535,4294967295:0..65535 low-value "
                  "mid-value~32768 high-value~65535",
              .summary = "Three levels, between two thresholds and on either side of them",
              .inPlace = InPlace::kYes)}},
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicAutoThreshold, unsigned(LxROI<LxBW8>*, PIC_THRESHOLD_MODES, float),
              .innerTraces = kByteSteps, .parameters = kModes,
              .summary = "The threshold that a mode selects", .followsRuns = true,
              .unattached = LX_ERROR_WRONG_VECTOR_SIZE,
              .refusals = {{LX_ERROR_INCONSISTENT_ARGUMENTS},
                           {LX_ERROR_WRONG_VECTOR_SIZE},
                           {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE},
                           {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE}}),
      LX_FORM(PicAutoThreshold, unsigned(LxROI<LxBW16>*, PIC_THRESHOLD_MODES, float),
              .innerTraces = kWordSteps, .parameters = kModes,
              .summary = "The threshold that a mode selects",
              .unattached = LX_ERROR_WRONG_VECTOR_SIZE,
              .refusals = {{LX_ERROR_WRONG_VECTOR_SIZE},
                           {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE},
                           {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE}})}},
    {{{LX_ERROR_ARGUMENT_2_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicAutoAdaptiveThreshold,
              void(LxROI<LxBW8>*, LxROI<LxBW8>*, PIC_THRESHOLD_MODES, int, int),
              .trace = "PicAutoAdaptiveThreshold",
              .innerTraces = "LxImage::LxImage | LxVector::SetMaxElements | "
                             "PicLinearTransform < PicScaleRotate",
              .parameters = "source >destination mode{4294967288-4294967293} "
                            "tile-width~30,1,2,7,16,100,0,2147483647:1..100 "
                            "tile-height~0,1,3,8,60,-1,2147483647:0..100",
              .summary = "A surface of thresholds that follows the image", .inPlace = InPlace::kYes,
              .reach = "all")}},
};

#undef LX_RELATIVE
#undef LX_THRESHOLD

}  // namespace

std::vector<Operation> ThresholdingOperations() { return Describe("histogram", kGroups); }

}  // namespace lx::catalogue
