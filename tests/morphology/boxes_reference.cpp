// SPDX-License-Identifier: Apache-2.0
// Boxes, pass by pass.
#include "convolution/replicated.h"
#include "support/reference.h"

namespace lx::test {

namespace {

using Extreme = const Value& (*)(const Value&, const Value&);

// Repeats the extreme over the pixels up to `reach` columns and rows away.
void Repeat(Picture& picture, Extreme extreme, std::uint32_t passes, int reachX, int reachY) {
  for (; passes > 0; --passes) {
    const Picture before = picture;
    ForEachComponent(picture, [&](int x, int y, int k) {
      Value found = before.At(x, y, k);
      for (int j = -reachY; j <= reachY; ++j) {
        for (int i = -reachX; i <= reachX; ++i) {
          found = extreme(found, Nearest(before, x + i, y + j, k));
        }
      }
      return found;
    });
    if (picture.values == before.values) return;  // no later pass changes anything
  }
}

void OverBox(Picture& picture, Extreme extreme, const Arguments& call) {
  constexpr std::uint32_t kSameAsX = 0xFFFFFFFF;
  const auto x = static_cast<std::uint32_t>(call.Number(2));
  const auto given = static_cast<std::uint32_t>(call.Number(3));
  const std::uint32_t y = given == kSameAsX ? x : given;
  const std::uint32_t both = std::min(x, y);
  Repeat(picture, extreme, both, 1, 1);
  Repeat(picture, extreme, x - both, 1, 0);
  Repeat(picture, extreme, y - both, 0, 1);
}

void Add(std::vector<Reference>& all, const std::string& function, Extreme extreme) {
  for (const std::string pixel : {"LxBW8", "LxBW16", "LxC24"}) {
    const std::string regions = "(LxROI<" + pixel + ">*, LxROI<" + pixel + ">*, ";
    all.push_back(Whole(function + regions + "unsigned int, unsigned int)",
                        [extreme](const Arguments& call, const auto& sources, auto& destinations) {
                          destinations.front() = sources.front();
                          OverBox(destinations.front(), extreme, call);
                        }));
  }
}

}  // namespace

std::vector<Reference> BoxMorphologyReferences() {
  std::vector<Reference> all;
  Add(all, "PicErodeBox", &std::min<Value>);
  Add(all, "PicDilateBox", &std::max<Value>);
  return all;
}

}  // namespace lx::test
