// SPDX-License-Identifier: Apache-2.0
// Every overload of the catalogue can be called by words, and is told by the help.
#include <algorithm>
#include <regex>

#include "support/trial/arguments.h"
#include "tools/lxpic/chain/execute.h"
#include "tools/lxpic/command/listing.h"
#include "tools/lxpic/value/vectors.h"
#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

using catalogue::Kind;
using catalogue::Operation;
using catalogue::Parameter;

// "@bw8", the name of an image of this type.
std::string NameOf(Pixel pixel) { return std::string("@").append(catalogue::PixelName(pixel)); }

// "@untyped256", the name of a histogram of that class and size.
std::string HistogramName(const Parameter& parameter) {
  const std::string holder = parameter.kind == Kind::kVector ? "@untyped" : "@histogram";
  return holder + std::to_string(parameter.counts.back());
}

// "@profile7x9", the name of a vector of kind 7 with 9 elements.
constexpr int kSide = 16;
constexpr std::string_view kProfile = "@profile";
constexpr const char* kTable = "@table";
// "@words9", the name of a vector of 9 words.
constexpr std::string_view kWords = "@words";

Value NamedVector(const std::string& word) {
  if (word.starts_with(kProfile)) {
    const auto kind = static_cast<Kind>(std::stoi(word.substr(kProfile.size())));
    const std::size_t count = std::stoul(word.substr(word.find('x') + 1));
    return FindTableKind(kind)->make(std::vector<unsigned>(test::FieldsOf(kind) * count, 9));
  }
  const auto count =
      static_cast<unsigned>(std::stoul(word.substr(word.find_first_of("0123456789"))));
  if (word.starts_with(kWords)) {
    return FindTableKind(Kind::kWordVector)->make(std::vector<unsigned>(count, 9));
  }
  const auto filled = [&](auto histogram) -> Value {
    auto* const counts = static_cast<unsigned*>(histogram->GetDataPtr());
    for (unsigned i = 0; i < count; ++i) counts[i] = i % 5;
    return {histogram.get(), histogram, [] { return Numbers{true, {}, {""}, {}}; }};
  };
  if (word.starts_with("@histogram")) {
    auto histogram = std::make_shared<LxBWHistogramVector>(count);
    histogram->SetNumElements(count);
    return filled(histogram);
  }
  auto untyped = std::make_shared<LxVector>();
  untyped->SetType(LX_VECTOR_HISTOGRAM, 0, static_cast<int>(count));
  return filled(untyped);
}

std::string ProfileName(const Parameter& parameter, std::size_t count) {
  return std::string(kProfile)
      .append(std::to_string(static_cast<int>(parameter.kind)))
      .append("x")
      .append(std::to_string(count));
}

std::string WordFor(const Operation& operation, const Parameter& parameter) {
  if (parameter.perColumn) return ProfileName(parameter, kSide);
  if (parameter.meaning == catalogue::Meaning::kSegment) return "9,0,0,300,1,1";
  if (parameter.size == catalogue::SizeRule::kFixed) return kTable;
  if (parameter.counted) {
    return ProfileName(parameter, operation.count(test::Arguments(operation).values));
  }
  switch (parameter.kind) {
    case Kind::kWordVector: {
      const auto& counts = parameter.counts;
      const bool full = counts.empty() || counts.front() > 0xFFFF;
      return full ? "identity" : std::string(kWords).append(std::to_string(counts.front()));
    }
    case Kind::kRegion:
      return NameOf(parameter.pixel);
    case Kind::kChoice:
      return parameter.choices.front().name;
    case Kind::kInteger:
      return parameter.choices.empty() ? NumberText(parameter.trials.front())
                                       : catalogue::ChoiceName(parameter, parameter.trials.front());
    case Kind::kConstant:
    case Kind::kReal:
    case Kind::kColour:
      return NumberText(parameter.trials.front());
    case Kind::kBytePathVector:
    case Kind::kWordPathVector:
    case Kind::kColourPathVector:
      return ProfileName(parameter, 4);
    case Kind::kHistogramVector:
      return HistogramName(parameter);
    case Kind::kVector:
      return parameter.counts.empty() ? "1,2,3" : HistogramName(parameter);
    case Kind::kColourLookup:
      return "none";
    case Kind::kColourPredicate:
      return "9,9,9";
    case Kind::kKernel:
      if (parameter.meaning == catalogue::Meaning::kRow) return "1,2,1:gain=0.5";
      return parameter.trials.front() != 0 ? "thin" : "1,2,1/2,4,2/1,2,1:gain=0.0625";
    default:
      return "identity";
  }
}

// The words that the definition of the overload asks for, all of them.
std::vector<std::string> WordsFor(const Operation& operation) {
  std::vector<std::string> words = LabelsOf(operation);
  bool isFirstSource = true;
  for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
    const Parameter& parameter = operation.parameters[i];
    if (!IsOperand(parameter)) continue;
    words.push_back(parameter.IsRegion() && isFirstSource ? "_" : WordFor(operation, parameter));
    if (parameter.IsRegion()) isFirstSource = false;
  }
  return words;
}

ImageValue NamedImage(const std::string& word) {
  if (word == kTable) {
    ImageValue table(Pixel::kBW8, 512, 512);
    table.Clear();
    return table;
  }
  for (int number = 1; number <= static_cast<int>(Pixel::kBinary); ++number) {
    const auto pixel = static_cast<Pixel>(number);
    if (word != NameOf(pixel)) continue;
    ImageValue image(pixel, kSide, kSide);
    image.Clear();
    image.Row(0)[0] = 1;  // some measures ask for more than one level
    const std::size_t bytes = image.RowBytes() / kSide;
    for (std::size_t x = 2; x < 5; ++x) image.Row(2)[x * bytes] = 1;  // an object for contours
    return image;
  }
  throw Failure(kFileFailed, word);
}

TEST(CatalogueReach, EveryOverloadIsChosenByItsWordsAndRuns) {
  const LxC24 overlayColour = PicGetOverlayColor();
  for (const Operation& operation : catalogue::All()) {
    SCOPED_TRACE(operation.signature);
    const auto sources = operation.SourceIndices();
    const Pixel pixel = sources.empty() ? Pixel::kBW8 : operation.parameters[sources.front()].pixel;
    ImageValue current = NamedImage(NameOf(pixel));
    auto words = WordsFor(operation);
    if (!sources.empty() &&
        operation.parameters[sources.front()].size == catalogue::SizeRule::kPart) {
      // The image is half of what the operation makes.
      current = ImageValue(pixel, kSide, kSide / 2);
      words.insert(words.begin(), std::to_string(kSide) + "x" + std::to_string(kSide));
    }
    const StepContext context = ContextOf(current, NamedImage, NamedVector);
    try {
      const Call call = ChooseOverload(operation.name, words, context);
      EXPECT_EQ(call.wordCount, words.size());
      EXPECT_EQ(call.operation->signature, operation.signature);
      if (operation.summary.starts_with("Reserved")) {
        EXPECT_THROW(Execute(call, context.current, 1), Failure);
        continue;
      }
      const Outcome outcome = Execute(call, context.current, 2);
      EXPECT_EQ(outcome.image ? outcome.image.PixelType() : Pixel::kNone,
                DestinationPixelOf(operation));
      for (const std::size_t i : operation.ResultIndices()) {
        EXPECT_EQ(
            std::ranges::count(outcome.results, operation.parameters[i].name, &NamedKept::name), 1);
      }
    } catch (const Failure& failure) {
      ADD_FAILURE() << Join(words, " ") << ": " << failure.what();
    }
  }
  PicSetOverlayColor(overlayColour);
}

TEST(CatalogueReach, HelpTellsEveryParameterAndError) {
  const std::regex blanks("\\s+");
  for (const Operation& operation : catalogue::All()) {
    const std::string help = std::regex_replace(HelpText(operation.name), blanks, " ");
    EXPECT_TRUE(Contains(help, operation.signature)) << operation.signature;
    for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
      const std::string& parameter = operation.parameters[i].name;
      if (i == operation.DestinationIndex()) continue;
      EXPECT_TRUE(Contains(help, parameter)) << operation.signature << " " << parameter;
    }
    for (const catalogue::Refusal& each : operation.refusals) {
      EXPECT_TRUE(Contains(help, std::string("(").append(std::to_string(each.code)) + ")"))
          << operation.signature;
    }
    EXPECT_TRUE(Contains(ListText(operation.name), operation.summary)) << operation.signature;
  }
  EXPECT_THROW(HelpText("gain-ofset"), Failure);
  EXPECT_THROW(ListText("zzz"), Failure);
}

}  // namespace
}  // namespace lx::tool
