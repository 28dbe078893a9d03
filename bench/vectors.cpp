// SPDX-License-Identifier: Apache-2.0
#include "bench/vectors.h"

#include <algorithm>

namespace lx::bench {

namespace {

test::Elements Noise(std::size_t count, Random& random) {
  test::Elements made;
  made.values.resize(count);
  for (double& value : made.values) value = static_cast<double>(random.Below(256));
  return made;
}

// Up and down, 128 elements each.
test::Elements Waves(std::size_t count) {
  test::Elements made;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t phase = i % 128;
    made.values.push_back(static_cast<double>(4 * std::min(phase, 127 - phase)));
  }
  return made;
}

// A signal of 8-bit noise, or the pixels of a line.
test::Elements UntypedNoise(const catalogue::Parameter& parameter, std::size_t length,
                            Random& random) {
  test::Elements made = test::UsualElements(parameter);
  const bool isLine = parameter.meaning == catalogue::Meaning::kSegment;
  made.groupLength = isLine ? 3 : static_cast<int>(length);
  const std::int64_t least = made.dataType == LX_DATA_SIGNED && !isLine ? -128 : 0;
  made.values.clear();
  for (std::size_t i = 0; i < length; ++i) {
    made.values.push_back(static_cast<double>(random.Between(least, least + 255)));
    if (!isLine) continue;
    made.values.push_back(static_cast<double>(i));
    made.values.push_back(static_cast<double>(i / 2));
  }
  return made;
}

// No group, and room for some.
test::Elements Room(std::size_t groups) {
  test::Elements made;
  made.dataSize = LX_DATA_SIZE_32;
  made.dataType = LX_DATA_SIGNED;
  made.groupLength = 2;
  made.spare = static_cast<int>(groups);
  return made;
}

}  // namespace

void SetLength(test::Arguments& call, const catalogue::Parameter& parameter, std::size_t index,
               const Form& form, Random& random) {
  if (form.length == 0 || !catalogue::IsVector(parameter.kind)) return;
  if (parameter.kind == catalogue::Kind::kVector) {
    const bool isResult = parameter.role == catalogue::Role::kWritten;
    call.SetVector(index,
                   isResult ? Room(form.length) : UntypedNoise(parameter, form.length, random));
  } else if (!parameter.IsWritten() && parameter.counts.empty() && !parameter.perColumn) {
    const std::size_t count = form.length * test::FieldsOf(parameter.kind);
    call.SetVector(index,
                   form.content == test::Content::kRamp ? Waves(count) : Noise(count, random));
  }
}

}  // namespace lx::bench
