// SPDX-License-Identifier: Apache-2.0
// The driver of windows whose sums leave 32 bits: sums over columns, which go down the image with
// the window and run along each row in turn.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "foundation/component_rows.h"
#include "foundation/scratch.h"

namespace lx {

// Sums over windows of 2 * halfX + 1 columns and 2 * halfY + 1 rows of elements of type T, with
// edge replication, and of their squares where they are wanted. False when there is no scratch
// memory.
template <typename T, bool kSquares>
class WideBoxSums {
 public:
  WideBoxSums(const ComponentImage& image, std::size_t halfX, std::size_t halfY)
      : image_(image),
        halfX_(static_cast<std::ptrdiff_t>(halfX)),
        halfY_(static_cast<std::ptrdiff_t>(halfY)),
        rowElements_(image.width * image.components),
        columns_(rowElements_),
        copy_(IsInPlace() ? rowElements_ * image.height : 0) {}

  explicit operator bool() const { return columns_ && copy_; }

  // destination = result(sum, sum of squares). Works in place.
  template <class Result>
  void Map(const Result& result) {
    if (IsInPlace()) CopySource();
    std::fill(columns_.get(), columns_.get() + rowElements_, Sums{});
    for (std::ptrdiff_t y = -halfY_; y <= halfY_; ++y) AddRow(y, 1);
    for (std::size_t y = 0; y < image_.height; ++y) {
      for (std::size_t c = 0; c < image_.components; ++c) WriteRow(y, c, result);
      AddRow(static_cast<std::ptrdiff_t>(y) - halfY_, kMinus);
      AddRow(static_cast<std::ptrdiff_t>(y) + halfY_ + 1, 1);
    }
  }

 private:
  static constexpr std::uint64_t kMinus = ~std::uint64_t{0};

  struct Sums {
    std::uint64_t sum = 0;
    std::uint64_t squares = 0;

    void Add(const Sums& other, std::uint64_t sign) {
      sum += sign * other.sum;
      if constexpr (kSquares) squares += sign * other.squares;
    }
  };

  // `at` as an index into `count` rows or columns, the nearest one if there is none.
  static std::size_t Nearest(std::ptrdiff_t at, std::size_t count) {
    const auto last = static_cast<std::ptrdiff_t>(count) - 1;
    return static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(at, 0, last));
  }

  bool IsInPlace() const { return image_.source.data == image_.destination.data; }

  // The rows that leave the window were written over.
  void CopySource() {
    for (std::size_t y = 0; y < image_.height; ++y) {
      std::memcpy(copy_.get() + y * rowElements_, image_.source.Row<std::uint8_t>(y),
                  rowElements_ * sizeof(T));
    }
  }

  void AddRow(std::ptrdiff_t y, std::uint64_t sign) {
    const std::size_t at = Nearest(y, image_.height);
    const T* const row =
        IsInPlace() ? copy_.get() + at * rowElements_ : image_.source.Row<const T>(at);
    for (std::size_t i = 0; i < rowElements_; ++i) {
      T pixel;  // rows lie at any address
      std::memcpy(&pixel, row + i, sizeof(T));
      const std::uint64_t v = pixel;
      columns_.get()[i].Add({v, v * v}, sign);
    }
  }

  const Sums& Column(std::ptrdiff_t x, std::size_t component) const {
    return columns_.get()[Nearest(x, image_.width) * image_.components + component];
  }

  template <class Result>
  void WriteRow(std::size_t y, std::size_t component, const Result& result) {
    std::uint8_t* const to = image_.destination.Row<std::uint8_t>(y);
    Sums window;
    for (std::ptrdiff_t x = -halfX_; x <= halfX_; ++x) window.Add(Column(x, component), 1);
    for (std::size_t x = 0; x < image_.width; ++x) {
      const T pixel = result(window.sum, window.squares);
      std::memcpy(to + (x * image_.components + component) * sizeof(T), &pixel, sizeof(T));
      const auto at = static_cast<std::ptrdiff_t>(x);
      window.Add(Column(at + halfX_ + 1, component), 1);
      window.Add(Column(at - halfX_, component), kMinus);
    }
  }

  const ComponentImage& image_;
  std::ptrdiff_t halfX_;
  std::ptrdiff_t halfY_;
  std::size_t rowElements_;
  Scratch<Sums> columns_;
  Scratch<T> copy_;
};

}  // namespace lx
