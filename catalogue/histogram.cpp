// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

const std::vector<Group> kGroups = {
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicHistogram, void(LxROI<LxBW8>*, LxBWHistogramVector*), .trace = "PicHistogram",
              .innerTraces = "LxVector::SetMaxElements < LxVector::SetNumElements",
              .parameters = "source >histogram", .summary = "Counts each grey level",
              .followsRuns = true, .refusals = {{LX_ERROR_INCONSISTENT_ARGUMENTS}}),
      LX_FORM(PicHistogram, void(LxROI<LxBW8>*, LxVector*), .trace = "PicHistogram ( LxVector)",
              .innerTraces = "LxVector::SetType", .parameters = "source >histogram#255,300,256",
              .summary = "Counts each grey level, whatever the runs")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicHistogram, void(LxROI<LxBW16>*, LxBWHistogramVector*, unsigned, unsigned, int),
              .trace = "PicHistogram ( LxBW16)",
              .innerTraces = "LxVector::SetMaxElements < LxVector::SetNumElements",
              .parameters = "source >histogram msb~15,15,11,13,0,16:9..15 "
                            "bits~8,9,10,11,0,1,16:0..11 saturate~1,0:0..1",
              .summary = "Counts the values of chosen bits"),
      LX_FORM(PicHistogram, void(LxROI<LxBW32>*, LxBWHistogramVector*, unsigned, unsigned, int),
              .trace = "PicHistogram ( LxBW32)",
              .innerTraces = "LxVector::SetMaxElements < LxVector::SetNumElements",
              .parameters = "source >histogram msb~31,31,30,24,0,32:9..31 "
                            "bits~8,9,10,12,0,1,25:0..11 saturate~1,0:0..1",
              .summary = "Counts the values of chosen bits")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_WRONG_VECTOR_SIZE},
      {LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_EMPTY_HISTOGRAM},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicSetupEqualize, void(LxBWHistogramVector*, LxBW8Vector*),
              .trace = "PicSetupEqualize ( LxBWHistogramVector)",
              .innerTraces = "LxVector::SetMaxElements", .parameters = "histogram#256 >table",
              .summary = "The table that equalizes", .withoutKernel = "all")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_EQUALIZE_SETUP},
      {LX_ERROR_WRONG_VECTOR_SIZE},
      {LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_EMPTY_HISTOGRAM},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicSetupEqualize, void(LxVector*, LxVector*), .trace = "PicSetupEqualize ( LxVector)",
              .innerTraces = "LxVector::SetType", .parameters = "histogram#255,256,300,256 >table",
              .summary = "The table that equalizes, scaled to 256", .withoutKernel = "all")}},
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicEqualize, void(LxROI<LxBW8>*, LxROI<LxBW8>*), .trace = "PicEqualize",
              .innerTraces = "LxVector::SetMaxElements | PicHistogram | "
                             "PicSetupEqualize ( LxBWHistogramVector) | "
                             "LxVector::SetMaxElements < PicSetupEqualize ( LxBWHistogramVector)",
              .parameters = "source >destination", .summary = "Spreads the grey levels evenly",
              .inPlace = InPlace::kYes, .reach = "all", .followsRuns = true,
              .refusals = {{LX_ERROR_INCONSISTENT_ARGUMENTS}, {LX_ERROR_EMPTY_HISTOGRAM}}),
      LX_FORM(PicEqualize, void(LxROI<LxBW16>*, LxROI<LxBW16>*), .trace = "PicEqualize (BW16)",
              .parameters = "source >destination", .summary = "Spreads the grey levels evenly",
              .inPlace = InPlace::kYes, .reach = "all")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_WRONG_VECTOR_SIZE},
      {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
      {LX_ERROR_INCONSISTENT_ARGUMENTS}},
     {LX_FORM(PicAnalyseHistogram, float(LxBWHistogramVector*, PIC_HISTOGRAM_FEATURE, int, int),
              .trace = "PicAnalyseHistogram",
              .parameters = "histogram#256 feature{0-8} first=0~0,0,0,100,-1:0..255 "
                            "last=255~255,255,255,200,256:0..255 result",
              .summary = "A number that describes a histogram", .withoutKernel = "4,5,7,8"),
      LX_FORM(PicAnalyseHistogramBW16, float(LxBWHistogramVector*, PIC_HISTOGRAM_FEATURE, int, int),
              .trace = "PicAnalyseHistogram (BW16)",
              .parameters = "histogram#65536 feature{0-8} first=0~0,0,0,100,-1:0..65535 "
                            "last=65535~65535,65535,40000,65536:0..65535 result",
              .summary = "A number that describes a histogram of 65536 bins",
              .withoutKernel = "4,5,7,8")}},
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_WRONG_VECTOR_KIND}, {LX_ERROR_WRONG_VECTOR_SIZE}},
     {LX_FORM(PicAnalyseHistogram, void(LxVector*, int, int, int, int&),
              .trace = "PicAnalyseHistogram",
              .parameters = "histogram#255,300,256,256 first~0,-5:-20..280 last~255,300:-20..280 "
                            "feature~0,1,2,3,4,5,6,7,9,-1{PIC_HISTOGRAM_FEATURE} >result",
              .summary = "A whole number that describes a histogram"),
      LX_FORM(PicAnalyseHistogram, void(LxVector*, int, int, int, float&),
              .trace = "PicAnalyseHistogram",
              .parameters = "histogram#255,300,256,256 first~0,-5:-20..280 last~255,300:-20..280 "
                            "feature~7,8,0,6,9,-1{PIC_HISTOGRAM_FEATURE} >result",
              .summary = "A number that describes a histogram", .withoutKernel = "all")}},
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_WRONG_VECTOR_SIZE}, {LX_ERROR_EMPTY_HISTOGRAM}},
     {LX_FORM(PicHistogramMoments, void(LxBWHistogramVector*, float&, unsigned, unsigned),
              .trace = "PicHistogramMoments ( 1)",
              .parameters =
                  "histogram#256 mean first=0~0,0,0,100:0..300 last=255~255,255,4294967295:0..300",
              .summary = "The mean grey level", .withoutKernel = "all"),
      LX_FORM(PicHistogramCenteredMoments,
              void(LxBWHistogramVector*, float&, float&, unsigned, unsigned),
              .trace = "PicHistogramCenteredMoments ( 2)",
              .parameters = "histogram#256 mean variance first=0~0,0,0,100:0..300 "
                            "last=255~255,255,4294967295:0..300",
              .summary = "The mean and the variance of the grey levels", .withoutKernel = "all")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_WRONG_VECTOR_SIZE},
      {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_6_OUT_OF_RANGE},
      {LX_ERROR_INCONSISTENT_ARGUMENTS},
      {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE}},
     {LX_FORM(PicHistogramThreshold,
              void(LxBWHistogramVector*, unsigned&, float&, float&, float, unsigned, unsigned),
              .trace = "PicHistogramThreshold",
              .parameters = "histogram#256 "
                            "<>threshold~4294967292,4294967291,4294967293,4294967288,4294967289,"
                            "4294967290:0..255{PIC_THRESHOLD_MODES} average-below average-above "
                            "relative=0.5~0.5,0,1,0.1,-0.1:0..1 first=0~0,0,0,20,256:0..255 "
                            "last=255~255,255,255,200,256:0..255",
              .summary = "Chooses a threshold from a histogram", .withoutKernel = "all"),
      LX_FORM(PicHistogramThresholdBW16,
              void(LxBWHistogramVector*, unsigned&, float&, float&, float, unsigned, unsigned),
              .trace = "PicHistogramThreshold (BW16)",
              .parameters = "histogram#65536 "
                            "<>threshold~4294967292,4294967291,4294967293,4294967288,4294967289,"
                            "4294967290:0..65535{PIC_THRESHOLD_MODES} average-below average-above "
                            "relative=0.5~0.5,0,1,0.1,-0.1:0..1 first=0~0,0,0,20,65536:0..65535 "
                            "last=65535~65535,65535,65535,200,65536:0..65535",
              .summary = "Chooses a threshold from a histogram of 65536 bins",
              .withoutKernel = "all")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_WRONG_VECTOR_SIZE},
      {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_INCONSISTENT_ARGUMENTS}},
     {LX_FORM(PicIsodataThreshold, unsigned(LxBWHistogramVector*, unsigned, unsigned),
              .trace = "PicIsodataThreshold ( LxBWHistogramVector)",
              .parameters =
                  "histogram#256 first=0~0,0,0,20,256:0..255 last=255~255,255,255,200,256:0..255 "
                  "threshold",
              .summary = "The midpoint of the class means, iterated", .withoutKernel = "all"),
      LX_FORM(PicIsodataThresholdBW16, unsigned(LxBWHistogramVector*, unsigned, unsigned),
              .trace = "PicIsodataThreshold ( LxBWHistogramVector)",
              .parameters = "histogram#65536 first=0~0,0,0,20,65536:0..65535 "
                            "last=65535~65535,65535,65535,200,65536:0..65535 threshold",
              .summary = "The midpoint of the class means of 65536 bins, iterated",
              .withoutKernel = "all")}},
    {{{LX_ERROR_ARGUMENT_2_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_INCONSISTENT_ARGUMENTS},
      {LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_VECTOR_CONTENT},
      {LX_ERROR_WRONG_VECTOR_SIZE}},
     {LX_FORM(PicIsodataThreshold, unsigned(LxVector*, unsigned, unsigned),
              .trace = "PicIsodataThreshold ( LxVector)",
              .parameters = "histogram#255,300,256,256 first=0~0,0,0,20,256:0..255 "
                            "last=255~255,255,255,200,256:0..255 threshold",
              .summary = "The midpoint of the class means, iterated", .withoutKernel = "all")}},
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_WRONG_VECTOR_SIZE}},
     {LX_FORM(PicMinResidueThreshold, unsigned char(LxBWHistogramVector*, float&, float&),
              .trace = "PicMinResidueThreshold",
              .parameters = "histogram#256 average-below average-above threshold",
              .summary = "The split with the least variance within its classes",
              .withoutKernel = "all"),
      LX_FORM(PicMaxEntropyThreshold, unsigned char(LxBWHistogramVector*, float&, float&),
              .trace = "PicMaxEntropyThreshold",
              .parameters = "histogram#256 average-below average-above threshold",
              .summary = "The split with the largest entropy of its classes",
              .withoutKernel = "all")}},
};

}  // namespace

std::vector<Operation> HistogramOperations() { return Describe("histogram", kGroups); }

}  // namespace lx::catalogue
