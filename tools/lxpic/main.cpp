// SPDX-License-Identifier: Apache-2.0
#include <new>

#include "tools/lxpic/command/batch.h"
#include "tools/lxpic/command/commands.h"

int main(int argc, char** argv) {
  try {
    return lx::tool::RunTool({argv + 1, argv + argc});
  } catch (const std::bad_alloc&) {
    lx::tool::ReportFailure("not enough memory");
    return lx::tool::kOperationFailed;
  }
}
