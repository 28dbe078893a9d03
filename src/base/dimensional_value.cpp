// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/dimensional_value.h"

LxDimensionalValue::LxDimensionalValue(double value, const char* unit)
    : m_f64Value(value), m_pUnit(unit == nullptr ? "" : unit) {}

LxDimensionalValue::~LxDimensionalValue() = default;
