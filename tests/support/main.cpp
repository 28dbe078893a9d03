// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

// The sanitizers ask the program for options under these names. The library must see a refused
// allocation as null, as it does without them.
#define LX_SANITIZER_OPTIONS extern "C" __attribute__((visibility("default"), used)) const char*

LX_SANITIZER_OPTIONS __asan_default_options();
LX_SANITIZER_OPTIONS __tsan_default_options();

const char* __asan_default_options() { return "allocator_may_return_null=1:detect_leaks=1"; }
const char* __tsan_default_options() { return "allocator_may_return_null=1"; }

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
