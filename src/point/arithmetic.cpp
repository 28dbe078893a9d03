// SPDX-License-Identifier: Apache-2.0
#include "lxpic/point/arithmetic.h"

#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <numeric>

#include "foundation/frame.h"
#include "lxpic/point/overlay.h"
#include "point/arithmetic_kernels.h"
#include "point/arithmetic_overlay_kernels.h"
#include "point/convert_kernels.h"
#include "point/copy_rows.h"
#include "point/lut_kernels.h"

namespace {

using namespace lx;
using namespace lx::point;

using Operation = ARITH_LOGIC_OPERATIONS;

constexpr std::uint64_t Bits(std::initializer_list<int> values) {
  std::uint64_t bits = 0;
  for (const int value : values) bits |= std::uint64_t{1} << value;
  return bits;
}

// The operations that a form refuses by name: those listed, or all but those listed. What is
// neither refused nor computed is an internal error.
class Refused {
 public:
  static constexpr Refused Only(std::initializer_list<int> values) { return {Bits(values), false}; }
  static constexpr Refused AllBut(std::initializer_list<int> values) {
    return {~Bits(values), true};
  }

  constexpr bool Has(Operation operation) const {
    if (operation < 0 || operation >= 64) return beyond_;
    return (bits_ >> operation & 1) != 0;
  }

 private:
  constexpr Refused(std::uint64_t bits, bool beyond) : bits_(bits), beyond_(beyond) {}

  std::uint64_t bits_;
  bool beyond_;  // what holds for values outside the enumeration
};

constexpr Refused kConstantFirst = Refused::Only({7, 8, 16, 17, 18, 21, 22});
constexpr Refused kConstantLast = Refused::Only({16, 17, 18});
constexpr Refused kShifts = Refused::Only({7, 8});

// The frame of every form. `worker` returns false when it has no case for the operation.
template <class Worker>
void RunForm(const char* trace, const Refused& refused, Operation operation,
             std::initializer_list<LxGenericROI*> regions, const Worker& worker) {
  RunOperation(trace, [&] {
    if (!Require(!refused.Has(operation), LX_ERROR_UNSUPPORTED_OPERATION)) return;
    if (Usable(regions)) Require(worker(), LX_ERROR_INTERNAL);
  });
}

// False when there is no kernel.
bool Run(MapKernel kernel, const PixelMap& map) {
  if (kernel == nullptr) return false;
  kernel(map);
  return true;
}

bool CombineBytes(Operation operation, Operands operands, const PixelMap& map) {
  return Run(ByteKernel(operands, operation, map.path), map);
}

bool CombineWords(Operation operation, Operands operands, const PixelMap& map) {
  return Run(WordKernel(operands, operation, map.path), map);
}

// The entries operation(level, constant) for all levels, from the same kernel that maps images.
void Tabulate(Operation operation, Operands operands, PixelMap map, std::uint16_t constant,
              ByteTableData& table) {
  ByteTableData levels;
  std::iota(std::begin(levels), std::end(levels), std::uint8_t{0});
  map.destination = {table, 0};
  map.sources[0] = {levels, 0};
  map.width = std::size(levels);
  map.height = 1;
  CombineBytes(operation, operands, WithConstant(map, constant));
}

bool IsDivision(Operation operation) {
  return operation == ARITH_LOGIC_DIVIDE || operation == ARITH_LOGIC_MODULO ||
         operation == ARITH_LOGIC_SCALED_DIVIDE;
}

// Grey pixels with a constant. Divisions by constants are cheaper through a table.
bool CombineGrey(Operation operation, Operands operands, const PixelMap& map) {
  if (!IsDivision(operation)) return CombineBytes(operation, operands, map);
  ByteTableData table;
  Tabulate(operation, operands, map, map.constants[0], table);
  LookUpBytes(map, table);
  return true;
}

bool CombineColour(Operation operation, Operands operands, PixelMap map) {
  if (!IsDivision(operation)) {
    map.width *= 3;
    return CombineBytes(operation, operands, map);
  }
  ByteTableData tables[3];
  for (std::size_t c = 0; c < 3; ++c) {
    Tabulate(operation, operands, map, map.constants[c], tables[c]);
  }
  LookUpComponents(map, tables);
  return true;
}

// The kernels shift by multiplying with a power of two: 2^count, or 2^(bits - 1 - count) to the
// right.
std::uint16_t ShiftFactor(Operation operation, unsigned count, unsigned bits) {
  count %= 32;
  if (count >= bits) return 0;
  const unsigned exponent = operation == ARITH_LOGIC_SHIFT_LEFT ? count : bits - 1 - count;
  return static_cast<std::uint16_t>(1U << exponent);
}

PixelMap WithLastConstant(Operation operation, PixelMap map, unsigned bits) {
  if (operation == ARITH_LOGIC_SHIFT_LEFT || operation == ARITH_LOGIC_SHIFT_RIGHT) {
    for (std::uint16_t& constant : map.constants) constant = ShiftFactor(operation, constant, bits);
  }
  return map;
}

bool Overlay(void (*kernel)(const PixelMap&), const PixelMap& map) {
  kernel(WithConstant(map, PicGetOverlayColor()));
  return true;
}

bool CopyOrInvert(Operation operation, PixelMap map, std::size_t pixelBytes) {
  if (operation == ARITH_LOGIC_COPY) {
    CopyRows(map, pixelBytes);
  } else {
    map.width *= pixelBytes;
    InvertBytes(map);
  }
  return true;
}

}  // namespace

// Grey, 8 bits

void PicOper(Operation operation, LxBW8 constant, LxROI<LxBW8>* destination) {
  RunForm("PicOper ( BW8 Const to Image)", Refused::AllBut({0}), operation, {destination}, [&] {
    FillBytes(WithConstant(MapOf(destination), constant));
    return true;
  });
}

void PicOper(Operation operation, LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunForm("PicOper ( BW8 Image to Image)", Refused::AllBut({0, 1}), operation,
          {source, destination},
          [&] { return CopyOrInvert(operation, MapOf(destination, source), 1); });
}

void PicOper(Operation operation, LxBW8 constant, LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunForm("PicOper ( BW8 Const, Image to Image)", kConstantFirst, operation, {source, destination},
          [&] {
            return CombineGrey(operation, Operands::kConstantWithImage,
                               WithConstant(MapOf(destination, source), constant));
          });
}

void PicOper(Operation operation, LxROI<LxBW8>* source, LxBW8 constant, LxROI<LxBW8>* destination) {
  RunForm("PicOper ( BW8 Image, Const to Image)", kConstantLast, operation, {source, destination},
          [&] {
            const auto map = WithConstant(MapOf(destination, source), constant);
            return CombineGrey(operation, Operands::kImageWithConstant,
                               WithLastConstant(operation, map, 8));
          });
}

void PicOper(Operation operation, LxROI<LxBW8>* source1, LxROI<LxBW8>* source2,
             LxROI<LxBW8>* destination) {
  RunForm("PicOper ( BW8 Image, Image to Image)", Refused::Only({7, 8, 34}), operation,
          {source1, source2, destination}, [&] {
            return CombineBytes(operation, Operands::kImages, MapOf(destination, source1, source2));
          });
}

// Colour

void PicOper(Operation operation, LxC24 constant, LxROI<LxC24>* destination) {
  RunForm("PicOper ( C24 Const to Image)", Refused::AllBut({0}), operation, {destination}, [&] {
    FillBytes(WithConstant(ComponentMapOf(destination), constant));
    return true;
  });
}

void PicOper(Operation operation, LxROI<LxC24>* source, LxROI<LxC24>* destination) {
  RunForm("PicOper ( C24 Image to Image)", Refused::AllBut({0, 1, 34}), operation,
          {source, destination}, [&] {
            if (operation == ARITH_LOGIC_OVERLAY) {
              return Overlay(&OverlayColour, MapOf(destination, source));
            }
            return CopyOrInvert(operation, ComponentMapOf(destination, source), 1);
          });
}

void PicOper(Operation operation, LxC24 constant, LxROI<LxC24>* source, LxROI<LxC24>* destination) {
  RunForm("PicOper ( C24 Const, Image to Image)", kConstantFirst, operation, {source, destination},
          [&] {
            return CombineColour(operation, Operands::kConstantWithImage,
                                 WithConstant(MapOf(destination, source), constant));
          });
}

void PicOper(Operation operation, LxROI<LxC24>* source, LxC24 constant, LxROI<LxC24>* destination) {
  RunForm("PicOper ( C24 Image, Const to Image)", kConstantLast, operation, {source, destination},
          [&] {
            const auto map = WithConstant(MapOf(destination, source), constant);
            return CombineColour(operation, Operands::kImageWithConstant,
                                 WithLastConstant(operation, map, 8));
          });
}

void PicOper(Operation operation, LxROI<LxC24>* source1, LxROI<LxC24>* source2,
             LxROI<LxC24>* destination) {
  RunForm("PicOper ( C24 Image, Image to Image)", kShifts, operation,
          {source1, source2, destination}, [&] {
            const auto pixels = MapOf(destination, source1, source2);
            if (operation == ARITH_LOGIC_OVERLAY) return Overlay(&OverlayColourOnColour, pixels);
            return CombineBytes(operation, Operands::kImages,
                                ComponentMapOf(destination, source1, source2));
          });
}

// Grey with colour

void PicOper(Operation operation, LxROI<LxBW8>* source, LxROI<LxC24>* destination) {
  RunForm("PicOper ( BW8 Image to C24 Image)", Refused::AllBut({0, 1, 34}), operation,
          {source, destination}, [&] {
            const auto map = MapOf(destination, source);
            if (operation == ARITH_LOGIC_OVERLAY) return Overlay(&PaintWhereGrey, map);
            GreyToColour(map, operation == ARITH_LOGIC_INVERT);
            return true;
          });
}

void PicOper(Operation operation, LxROI<LxBW8>* source1, LxROI<LxC24>* source2,
             LxROI<LxC24>* destination) {
  RunForm("PicOper ( BW8 Image, C24 Image to C24 Image)", kShifts, operation,
          {source1, source2, destination}, [&] {
            const auto pixels = MapOf(destination, source1, source2);
            if (operation == ARITH_LOGIC_OVERLAY) return Overlay(&OverlayColourOnGrey, pixels);
            return CombineBytes(operation, Operands::kGreyWithColour, pixels);
          });
}

void PicOper(Operation operation, LxROI<LxBW8>* source1, LxROI<LxBW8>* source2,
             LxROI<LxC24>* destination) {
  RunForm("PicOper ( BW8 Image, BW8 Image to C24 Image)", Refused::AllBut({34}), operation,
          {source1, source2, destination},
          [&] { return Overlay(&PaintGreyWhereGrey, MapOf(destination, source1, source2)); });
}

void PicOper(Operation operation, LxROI<LxC24>* source1, LxROI<LxBW8>* source2,
             LxROI<LxC24>* destination) {
  RunForm("PicOper ( C24 Image, BW8 Image to C24 Image)", kShifts, operation,
          {source1, source2, destination}, [&] {
            const auto pixels = MapOf(destination, source1, source2);
            if (operation == ARITH_LOGIC_OVERLAY) return Overlay(&PaintColourWhereGrey, pixels);
            return CombineBytes(operation, Operands::kColourWithGrey,
                                MapOf(destination, source2, source1));
          });
}

// Grey, 16 bits

void PicOper(Operation operation, LxROI<LxBW8>* source1, LxROI<LxBW8>* source2,
             LxROI<LxBW16>* destination) {
  RunForm("PicOper ( BW8 Image and BW8 Image to BW16 Image)", Refused::AllBut({2, 3, 4, 5}),
          operation, {source1, source2, destination}, [&] {
            return CombineWords(operation, Operands::kBytes, MapOf(destination, source1, source2));
          });
}

void PicOper(Operation operation, LxROI<LxBW16>* source1, LxROI<LxBW8>* source2,
             LxROI<LxBW16>* destination) {
  RunForm("PicOper ( BW16 Image and BW8 Image to BW16 IMage)",
          Refused::AllBut({2, 3, 4, 5, 29, 30}), operation, {source1, source2, destination}, [&] {
            return CombineWords(operation, Operands::kWordsWithBytes,
                                MapOf(destination, source1, source2));
          });
}

void PicOper(Operation operation, LxBW16 constant, LxROI<LxBW16>* destination) {
  RunForm("PicOper ( BW16 Const to Image)", Refused::AllBut({0}), operation, {destination}, [&] {
    FillWords(WithConstant(MapOf(destination), constant));
    return true;
  });
}

void PicOper(Operation operation, LxROI<LxBW16>* source, LxROI<LxBW16>* destination) {
  RunForm("PicOper (BW16 Image to Image)", Refused::AllBut({0, 1}), operation,
          {source, destination},
          [&] { return CopyOrInvert(operation, MapOf(destination, source), 2); });
}

void PicOper(Operation operation, LxBW16 constant, LxROI<LxBW16>* source,
             LxROI<LxBW16>* destination) {
  RunForm("PicOper ( BW16 Const, Image to Image)", kConstantFirst, operation, {source, destination},
          [&] {
            return CombineWords(operation, Operands::kConstantWithImage,
                                WithConstant(MapOf(destination, source), constant));
          });
}

void PicOper(Operation operation, LxROI<LxBW16>* source, LxBW16 constant,
             LxROI<LxBW16>* destination) {
  RunForm("PicOper ( BW16 Image, Const to Image)", kConstantLast, operation, {source, destination},
          [&] {
            const auto map = WithConstant(MapOf(destination, source), constant);
            return CombineWords(operation, Operands::kImageWithConstant,
                                WithLastConstant(operation, map, 16));
          });
}

void PicOper(Operation operation, LxROI<LxBW16>* source1, LxROI<LxBW16>* source2,
             LxROI<LxBW16>* destination) {
  RunForm("PicOper ( BW16 Image, Image to Image)", kShifts, operation,
          {source1, source2, destination}, [&] {
            return CombineWords(operation, Operands::kImages, MapOf(destination, source1, source2));
          });
}
