// SPDX-License-Identifier: Apache-2.0
/// @file dimensional_value.h
/// A number with a unit.
#pragma once

#include "lxpic/base/export.h"

/// A value in some unit of measurement, for instance 12.5 mm.
class LXPIC_API LxDimensionalValue {
 public:
  LxDimensionalValue() = default;
  /// `unit` must outlive the value; null means none.
  explicit LxDimensionalValue(double value, const char* unit);
  ~LxDimensionalValue();

  double GetValue() const { return m_f64Value; }
  /// The unit's symbol; "" when there is none.
  const char* GetUnit() const { return m_pUnit; }

 private:
  double m_f64Value = 0.0;
  const char* m_pUnit = "";
};
