// SPDX-License-Identifier: Apache-2.0
/// @file kernel.h
/// The convolution kernel.
#pragma once

#include <cstdint>

#include "lxpic/base/export.h"

/// Preset 3 × 3 kernels. In the patterns, for thinning and thickening, 1 must be set, 0 must be
/// clear and -1 is ignored; their gain and rectifier are 0. All others have gain 1 and rectifier 2.
enum KERNEL_TYPE : int {
  KERNEL_THIN = 1,         ///< 0 0 0 / -1 1 -1 / 1 1 1
  KERNEL_THICK = 2,        ///< 0 0 0 / -1 0 -1 / 1 1 1
  KERNEL_SQUARE = 3,       ///< nine times 1
  KERNEL_SOBEL_X = 4,      ///< -1 0 1 / -2 0 2 / -1 0 1
  KERNEL_SOBEL_Y = 5,      ///< -1 -2 -1 / 0 0 0 / 1 2 1
  KERNEL_PREWITT_X = 6,    ///< -1 0 1 / -1 0 1 / -1 0 1
  KERNEL_PREWITT_Y = 7,    ///< -1 -1 -1 / 0 0 0 / 1 1 1
  KERNEL_LAPLACIAN_4 = 8,  ///< 0 1 0 / 1 -4 1 / 0 1 0
  KERNEL_LAPLACIAN_8 = 9,  ///< 1 1 1 / 1 -8 1 / 1 1 1
  KERNEL_GAUSSIAN = 10,    ///< 1 2 1 / 2 4 2 / 1 2 1
  KERNEL_RING = 11,        ///< 1 1 1 / 1 0 1 / 1 1 1
  KERNEL_UNIFORM = 12,     ///< nine times 1
  KERNEL_HIGHPASS_1 = 13,  ///< 0 -1 0 / -1 5 -1 / 0 -1 0
  KERNEL_HIGHPASS_2 = 14   ///< -1 -1 -1 / -1 9 -1 / -1 -1 -1
};

/// How a pattern turns between passes of thinning and thickening.
enum KERNEL_ROTATION : int {
  KERNEL_ROTATION_NONE = 0,          ///< not at all: one pass an iteration
  KERNEL_ROTATION_CLOCKWISE = 1,     ///< the outer cells move one step after each of eight passes
  KERNEL_ROTATION_ANTICLOCKWISE = 2  ///< the same, the other way
};

/// What becomes of a signed result.
enum KERNEL_RECTIFIER : short {
  RECTIFIER_NONE = 0,      ///< nothing
  RECTIFIER_NEGATIVE = 1,  ///< the negative side: its magnitude, 0 for the positive side
  RECTIFIER_POSITIVE = 2,  ///< the positive side; 0 for the negative
  RECTIFIER_ABSOLUTE = 3   ///< the magnitude
};

/// A rectangle of single-precision coefficients, and the numbers that turn a weighted sum into a
/// pixel.
///
/// Every member resets the error state, and sets it on failure with "LxKernel::" and its own name
/// in the trace. Storage grows when needed and never shrinks; growing loses the coefficients, and
/// new ones are not initialised. After LX_ERROR_ALLOCATION_FAILED a kernel has no storage.
class LXPIC_API LxKernel {
 public:
  /// Size 0 × 0, no storage, gain 1, offset 0, rectifier 2, outside value 0.
  LxKernel();
  /// A kernel of the given size and settings with uninitialised coefficients. A negative product of
  /// the sizes counts as LX_ERROR_ALLOCATION_FAILED. Trace "LxKernel::LxKernel".
  LxKernel(short sizeX, short sizeY, float gain, unsigned int offset, short rectifier,
           unsigned int outsideValue);
  /// A preset, as SetKernel() makes it.
  explicit LxKernel(KERNEL_TYPE type);
  /// A deep copy. LX_ERROR_ALLOCATION_FAILED leaves a kernel without storage; trace
  /// "LxKernel::LxKernel".
  LxKernel(const LxKernel& other);
  /// A deep copy; trace "LxKernel::operator=".
  LxKernel& operator=(const LxKernel& other);
  virtual ~LxKernel();

  /// Makes this kernel the preset `type`. Another value sets LX_ERROR_ARGUMENT_1_OUT_OF_RANGE and
  /// leaves a 3 × 3 kernel whose settings are 0 and whose coefficients are as they were.
  void SetKernel(KERNEL_TYPE type);

  /// Makes this a 3 × 3 kernel of the coefficients, row by row; the settings stay. Trace
  /// "LxKernel::SetKernelData 3x3".
  void SetKernelData(float k00, float k10, float k20, float k01, float k11, float k21, float k02,
                     float k12, float k22);
  /// The same for 5 × 5. Trace "LxKernel::SetKernelData 5x5".
  void SetKernelData(float k00, float k10, float k20, float k30, float k40, float k01, float k11,
                     float k21, float k31, float k41, float k02, float k12, float k22, float k32,
                     float k42, float k03, float k13, float k23, float k33, float k43, float k04,
                     float k14, float k24, float k34, float k44);
  /// The same for 7 × 7. Trace "LxKernel::SetKernelData 7x7".
  void SetKernelData(float k00, float k10, float k20, float k30, float k40, float k50, float k60,
                     float k01, float k11, float k21, float k31, float k41, float k51, float k61,
                     float k02, float k12, float k22, float k32, float k42, float k52, float k62,
                     float k03, float k13, float k23, float k33, float k43, float k53, float k63,
                     float k04, float k14, float k24, float k34, float k44, float k54, float k64,
                     float k05, float k15, float k25, float k35, float k45, float k55, float k65,
                     float k06, float k16, float k26, float k36, float k46, float k56, float k66);

  /// Reads coefficient (x, y) into `value`. Errors: LX_ERROR_KERNEL_NOT_ALLOCATED,
  /// LX_ERROR_ARGUMENT_1_OUT_OF_RANGE, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE.
  void GetKernelData(int x, int y, float& value);
  /// Writes coefficient (x, y). Errors as GetKernelData().
  void SetKernelData(int x, int y, float value);
  /// The coefficients, row by row; null without storage.
  float* GetDataPtr();

  short GetSizeX();
  short GetSizeY();
  /// Sets the number of columns, growing the storage if needed; coefficients do not move. Not
  /// checked.
  void SetSizeX(short columns);
  /// Sets the number of rows, growing the storage if needed. Not checked.
  void SetSizeY(short rows);
  /// Makes room for `count` coefficients; nothing happens when there is room.
  void SetAllocatedSize(unsigned int count);
  /// Coefficients that the storage can hold.
  unsigned int GetAllocatedSize();

  float GetGain();
  unsigned int GetOffset();
  short GetRectifier();
  unsigned int GetOutsideValue();
  void SetGain(float gain);
  void SetOffset(unsigned int offset);
  void SetRectifier(short rectifier);
  void SetOutsideValue(unsigned int outsideValue);

 private:
  LXPIC_PRIVATE bool Reserve(unsigned int count);
  LXPIC_PRIVATE bool SetSquare(short size, const float* coefficients);
  LXPIC_PRIVATE bool CopyFrom(const LxKernel& other);

  std::int16_t m_n16SizeX = 0;
  std::int16_t m_n16SizeY = 0;
  float m_f32Gain = 1.0F;
  std::uint32_t m_un32Offset = 0;
  std::int16_t m_n16Rectifier = RECTIFIER_POSITIVE;
  std::uint32_t m_un32OutsideValue = 0;
  float* m_pData = nullptr;
  std::uint32_t m_un32AllocatedSize = 0;
};
