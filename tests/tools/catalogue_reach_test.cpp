// SPDX-License-Identifier: Apache-2.0
// Every overload of the catalogue can be called by words, and is told by the help.
#include <algorithm>

#include "tools/lxpic/chain/execute.h"
#include "tools/lxpic/command/listing.h"
#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

using catalogue::Kind;
using catalogue::Operation;
using catalogue::Parameter;

// "@bw8", the name of an image of this type.
std::string NameOf(Pixel pixel) { return std::string("@").append(catalogue::PixelName(pixel)); }

std::string WordFor(const Parameter& parameter) {
  switch (parameter.kind) {
    case Kind::kRegion:
      return NameOf(parameter.pixel);
    case Kind::kChoice:
      return parameter.choices.front().name;
    case Kind::kConstant:
    case Kind::kInteger:
    case Kind::kReal:
    case Kind::kColour:
      return NumberText(parameter.trials.front());
    case Kind::kVector:
      return "1,2,3";
    case Kind::kKernel:
      return "1,2,1/2,4,2/1,2,1:gain=0.0625";
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
    words.push_back(parameter.IsRegion() && isFirstSource ? "_" : WordFor(parameter));
    if (parameter.IsRegion()) isFirstSource = false;
  }
  return words;
}

std::string NamesOf(const Outcome& outcome) {
  std::string names;
  for (const NamedKept& each : outcome.results) names += "@" + each.name + " ";
  return names;
}

ImageValue NamedImage(const std::string& word) {
  for (int number = 1; number <= static_cast<int>(Pixel::kBinary); ++number) {
    const auto pixel = static_cast<Pixel>(number);
    if (word != NameOf(pixel)) continue;
    ImageValue image(pixel, 16, 16);
    image.Clear();
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
    const StepContext context = ContextOf(NamedImage(NameOf(pixel)), NamedImage);
    const auto words = WordsFor(operation);
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
        EXPECT_TRUE(Contains(NamesOf(outcome), "@" + operation.parameters[i].name + " "));
      }
    } catch (const Failure& failure) {
      ADD_FAILURE() << Join(words, " ") << ": " << failure.what();
    }
  }
  PicSetOverlayColor(overlayColour);
}

TEST(CatalogueReach, HelpTellsEveryParameterAndError) {
  for (const Operation& operation : catalogue::All()) {
    const std::string help = HelpText(operation.name);
    EXPECT_TRUE(Contains(help, operation.signature)) << operation.signature;
    for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
      const std::string& parameter = operation.parameters[i].name;
      if (i == operation.DestinationIndex()) continue;
      EXPECT_TRUE(Contains(help, parameter)) << operation.signature << " " << parameter;
    }
    for (const auto& [code, leaves] : operation.refusals) {
      EXPECT_TRUE(Contains(help, std::string("(").append(std::to_string(code)) + ")"))
          << operation.signature;
    }
    EXPECT_TRUE(Contains(ListText(operation.name), operation.summary)) << operation.signature;
  }
  EXPECT_THROW(HelpText("gain-ofset"), Failure);
  EXPECT_THROW(ListText("zzz"), Failure);
}

}  // namespace
}  // namespace lx::tool
