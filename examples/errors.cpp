// SPDX-License-Identifier: Apache-2.0
// How to see that an operation failed, and why.
#include <cstdio>
#include <stdexcept>
#include <string>

#include "lxpic/lxpic.h"

// For programs that prefer exceptions.
void ThrowOnError() {
  if (LxGetError() == LX_OK) return;
  std::string message = LxGetErrorText(LxGetError());
  for (int i = 0; i < LxGetTraceCount(); ++i) message += std::string(" in ") + LxGetTrace(i);
  throw std::runtime_error(message);
}

int main() {
  LxImage<LxBW8> image(640, 480);
  LxImage<LxBW8> small(320, 240);
  PicCopy(&image, &small);
  std::printf("%d: %s\n", LxGetError(), LxGetErrorText(LxGetError()));
  std::printf("%s\n", LxGetTrace(0));

  PicCopy(LxBW8(0), &image);
  std::printf("%d\n", LxGetError());

  try {
    PicCopy(LxBW8(0), static_cast<LxROI<LxBW8>*>(nullptr));
    ThrowOnError();
  } catch (const std::runtime_error& error) {
    std::printf("%s\n", error.what());
  }
}
