// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <utility>

#include "support/reference.h"

namespace lx::test {

namespace {

// The operands of one component: the first, the second, the largest value, the old destination.
struct Operands {
  Value a;
  Value b;
  Value m;
  Value old;
};

using Formula = Value (*)(const Operands&);

constexpr Formula kNone = nullptr;

// By operation value.
constexpr std::array<Formula, 36> kFormulas = {
    [](const Operands& o) { return o.a; },
    [](const Operands& o) { return o.m - o.a; },
    [](const Operands& o) { return std::min(o.a + o.b, o.m); },
    [](const Operands& o) { return std::max<Value>(o.a - o.b, 0); },
    [](const Operands& o) { return std::min(o.a * o.b, o.m); },
    [](const Operands& o) { return o.b == 0 ? o.m : o.a / o.b; },
    [](const Operands& o) { return o.b == 0 ? 0 : o.a % o.b; },
    [](const Operands& o) { return (o.a << (o.b % 32)) & o.m; },
    [](const Operands& o) { return o.a >> (o.b % 32); },
    [](const Operands& o) { return (o.a + o.b) / 2; },
    [](const Operands& o) { return (o.a + (o.m - o.b)) / 2; },
    [](const Operands& o) { return o.a * o.b / (o.m + 1); },
    [](const Operands& o) { return o.b == 0 ? o.m : std::min(o.a * 256 / o.b, o.m); },
    [](const Operands& o) { return o.a & o.b; },
    [](const Operands& o) { return o.a | o.b; },
    [](const Operands& o) { return o.a ^ o.b; },
    [](const Operands& o) { return o.a != 0 && o.b != 0 ? o.m : 0; },
    [](const Operands& o) { return o.a != 0 || o.b != 0 ? o.m : 0; },
    [](const Operands& o) { return (o.a != 0) != (o.b != 0) ? o.m : 0; },
    [](const Operands& o) { return std::min(o.a, o.b); },
    [](const Operands& o) { return std::max(o.a, o.b); },
    [](const Operands& o) { return o.a == 0 ? o.b : o.old; },
    [](const Operands& o) { return o.a != 0 ? o.b : o.old; },
    [](const Operands& o) { return o.a == o.b ? o.m : 0; },
    [](const Operands& o) { return o.a != o.b ? o.m : 0; },
    [](const Operands& o) { return o.a >= o.b ? o.m : 0; },
    [](const Operands& o) { return o.a <= o.b ? o.m : 0; },
    [](const Operands& o) { return o.a > o.b ? o.m : 0; },
    [](const Operands& o) { return o.a < o.b ? o.m : 0; },
    [](const Operands& o) { return (o.a + o.b) % 65536; },
    [](const Operands& o) { return (o.a - o.b + 65536) % 65536; },
    kNone,
    kNone,
    [](const Operands& o) { return o.a > o.b ? o.a - o.b : o.b - o.a; },
    kNone,
    kNone};

// Where an operand comes from. Grey ones stand for each component.
enum class From {
  kNowhere,
  kConstant,  // parameter 1, or 2 behind an image
  kColour,    // a source, component by component
  kGrey
};

constexpr int kOverlay = 34;

int ChoiceOf(const Pixels& p) { return static_cast<int>(p.call.Number(0)); }

Value Read(From from, std::size_t parameter, const Value* source, int k, const Pixels& p) {
  if (from == From::kConstant) return p.call.Component(parameter, k);
  return source == nullptr ? 0 : source[from == From::kGrey ? 0 : k];
}

void PaintOverlayColour(const Pixels& p) {
  const LxC24 colour = PicGetOverlayColor();
  p.d[0] = colour.c0;
  p.d[1] = colour.c1;
  p.d[2] = colour.c2;
}

void TakeColour(const Value* source, const Pixels& p) { std::copy_n(source, 3, p.d); }
void TakeGrey(const Value* source, const Pixels& p) { std::fill_n(p.d, 3, *source); }
bool IsBlack(const Value* pixel) { return pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0; }

using OverlayRule = void (*)(const Pixels&);

// A form of PicOper: the parameters behind the operation, its operands, the largest value of a
// result, and what the overlay does.
struct Form {
  const char* parameters;
  From first;
  From second;
  Value maximum;
  OverlayRule overlay = nullptr;
};

constexpr From kConst = From::kConstant;
constexpr From kColour = From::kColour;
constexpr From kGrey = From::kGrey;
constexpr From kNo = From::kNowhere;

constexpr std::array kForms = {
    Form{"LxBW8, LxROI<LxBW8>*", kConst, kNo, 255},
    Form{"LxROI<LxBW8>*, LxROI<LxBW8>*", kGrey, kNo, 255},
    Form{"LxROI<LxBW8>*, LxROI<LxC24>*", kGrey, kNo, 255,
         [](const Pixels& p) {
           if (*p.a != 0) PaintOverlayColour(p);
         }},
    Form{"LxBW8, LxROI<LxBW8>*, LxROI<LxBW8>*", kConst, kGrey, 255},
    Form{"LxROI<LxBW8>*, LxBW8, LxROI<LxBW8>*", kGrey, kConst, 255},
    Form{"LxROI<LxBW8>*, LxROI<LxBW8>*, LxROI<LxBW8>*", kGrey, kGrey, 255},
    Form{"LxC24, LxROI<LxC24>*", kConst, kNo, 255},
    Form{"LxROI<LxC24>*, LxROI<LxC24>*", kColour, kNo, 255,
         [](const Pixels& p) {
           if (!IsBlack(p.a)) TakeColour(p.a, p);
         }},
    Form{"LxC24, LxROI<LxC24>*, LxROI<LxC24>*", kConst, kColour, 255},
    Form{"LxROI<LxC24>*, LxC24, LxROI<LxC24>*", kColour, kConst, 255},
    Form{"LxROI<LxC24>*, LxROI<LxC24>*, LxROI<LxC24>*", kColour, kColour, 255,
         [](const Pixels& p) { TakeColour(IsBlack(p.b) ? p.a : p.b, p); }},
    Form{"LxROI<LxBW8>*, LxROI<LxC24>*, LxROI<LxC24>*", kGrey, kColour, 255,
         [](const Pixels& p) { IsBlack(p.b) ? TakeGrey(p.a, p) : TakeColour(p.b, p); }},
    Form{"LxROI<LxBW8>*, LxROI<LxBW8>*, LxROI<LxC24>*", kGrey, kGrey, 255,
         [](const Pixels& p) { *p.b == 0 ? TakeGrey(p.a, p) : PaintOverlayColour(p); }},
    Form{"LxROI<LxC24>*, LxROI<LxBW8>*, LxROI<LxC24>*", kColour, kGrey, 255,
         [](const Pixels& p) { *p.b != 0 ? PaintOverlayColour(p) : TakeColour(p.a, p); }},
    Form{"LxROI<LxBW8>*, LxROI<LxBW8>*, LxROI<LxBW16>*", kGrey, kGrey, 65535},
    Form{"LxROI<LxBW16>*, LxROI<LxBW8>*, LxROI<LxBW16>*", kGrey, kGrey, 65535},
    Form{"LxBW16, LxROI<LxBW16>*", kConst, kNo, 65535},
    Form{"LxROI<LxBW16>*, LxROI<LxBW16>*", kGrey, kNo, 65535},
    Form{"LxBW16, LxROI<LxBW16>*, LxROI<LxBW16>*", kConst, kGrey, 65535},
    Form{"LxROI<LxBW16>*, LxBW16, LxROI<LxBW16>*", kGrey, kConst, 65535},
    Form{"LxROI<LxBW16>*, LxROI<LxBW16>*, LxROI<LxBW16>*", kGrey, kGrey, 65535}};

void Combine(const Form& form, const Pixels& p) {
  const int choice = ChoiceOf(p);
  if (choice == kOverlay) return form.overlay(p);
  const Value* const second = form.first == From::kConstant ? p.a : p.b;
  for (int k = 0; k < p.components; ++k) {
    p.d[k] = kFormulas[static_cast<std::size_t>(choice)](
        {Read(form.first, 1, p.a, k, p), Read(form.second, 2, second, k, p), form.maximum, p.d[k]});
  }
}

}  // namespace

std::vector<Reference> ArithmeticReferences() {
  std::vector<Reference> references;
  for (const Form& form : kForms) {
    const std::string signature =
        std::string("PicOper(ARITH_LOGIC_OPERATIONS, ") + form.parameters + ")";
    references.push_back(Pointwise(signature, [&form](const Pixels& p) { Combine(form, p); }));
  }
  return references;
}

}  // namespace lx::test
