// SPDX-License-Identifier: Apache-2.0
// Images over memory that belongs to somebody else, such as a camera driver.
#include <cstddef>
#include <cstdio>
#include <vector>

#include "lxpic/lxpic.h"

// A frame as drivers deliver it: rows padded to a fixed pitch, the lowest row first in memory.
struct Frame {
  int width = 5;
  int height = 3;
  std::ptrdiff_t pitch = 8;
  std::vector<unsigned char> bytes = std::vector<unsigned char>(24, 100);
};

int main() {
  Frame frame;
  frame.bytes[0] = 200;

  LxImage<LxBW8> view;
  view.Attach(frame.bytes.data(), frame.width, frame.height, frame.pitch);
  PicGainOffset(&view, &view, 1.0F, 50.0F);
  std::printf("%d %d, padding %d\n", frame.bytes[0], frame.bytes[4], frame.bytes[5]);

  const int lastRow = frame.height - 1;
  unsigned char* const topRow = frame.bytes.data() + lastRow * frame.pitch;
  view.Attach(topRow, frame.width, frame.height, -frame.pitch);
  std::printf("bottom left %d\n", view.GetPixel(0, 2).value);
}
