// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/commands.h"

int main(int argc, char** argv) { return lx::tool::RunTool({argv + 1, argv + argc}); }
