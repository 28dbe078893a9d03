// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>

#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/command/batch.h"
#include "tools/lxpic/command/drawing_commands.h"
#include "tools/lxpic/command/line_commands.h"
#include "tools/lxpic/command/listing.h"
#include "tools/lxpic/command/parsing.h"
#include "tools/lxpic/command/sequence_commands.h"
#include "tools/lxpic/command/spectrum_commands.h"
#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/file/identity.h"
#include "tools/lxpic/file/input_file.h"

namespace lx::tool {

namespace {

constexpr const char* kGuide = R"(
A chain is one or more image files and then operations, for instance

  lxpic part.png gain-offset 1.4 -20 oper subtract golden.png -o out.png
  lxpic part.png histogram isodata-threshold @histogram oper greater @threshold -o out.png

Each operation works on the current image, at first the input, and leaves the next one. Behind its
name stand, in the order that 'lxpic help OPERATION' shows:

  choices      by name: oper subtract ...
  images       a file, or @ for the input
  constants    a grey level, or a colour r,g,b
  points       x,y
  tables       a file of numbers, identity, invert, gamma:G, threshold:N
  kernels      rows like 1,2,1/2,4,2/1,2,1, or a preset like sobel-x
  @NAME        for any of these, what a step before left under this name
  _            the current image, where it is not the first: oper subtract 100 _ is 100 - image

Between the name and these words may stand, in any order:

  TYPE         the pixel type of the result, where several are possible: convert bw16 8
  WORD         another word of those that the help shows for 'this form' only
  WxH          the size of the result: copy bw8 640x480 128
  onto IMAGE   the image that the result starts as; otherwise it starts as a copy of the current
               image if that has its type and size, and black if not

What an operation leaves besides that image is kept under the name that its help shows, until
another result takes the name; 'store NAME' keeps what the step before left, image or numbers, under
a name of your own. Numbers are printed at the end, those of many files as one table. Where the last
step leaves a vector, -o draws it.

A file called - is standard input, and behind -o standard output, which then gets PNG or what --as
says; numbers go to stderr there. Pipes and devices are read and written as they are. Any other file
is replaced only when its successor is whole, and no run writes over a file that another one reads.

Types are bw8, bw16, bw32, c24, c15, c16, c24a, complex64 and bw1. Files hold bw8, bw16 and c24.
Exit codes: 0 fine, 1 an operation failed, 2 a wrong command line, 3 a file cannot be read or
written.)";

ExitCode RunList(const Arguments& arguments) {
  CLI::App app("Lists the operations and their forms", "lxpic list");
  std::string part;
  app.add_option("TEXT", part, "Only names that contain this");
  if (Parse(app, arguments)) std::fputs(ListText(part).c_str(), stdout);
  return kFine;
}

ExitCode RunInfo(const Arguments& arguments) {
  CLI::App app("Tells format, size, pixel type and values of image files", "lxpic info");
  std::vector<std::string> files;
  app.add_option("FILE", files, "Image files")->required();
  AddMaxPixels(app);
  if (!Parse(app, arguments)) return kFine;
  ExitCode code = kFine;
  for (const std::string& file : files) {
    try {
      std::fputs(InfoText(file).c_str(), stdout);
    } catch (const Failure& failure) {
      ReportFailure(failure.what());
      code = failure.Code();
    }
  }
  return code;
}

ExitCode RunChain(const Arguments& arguments) {
  CLI::App app("Runs image-processing operations on files", "lxpic");
  BatchOptions options;
  std::string format;
  bool plain = false;
  app.add_option("WORDS", options.words, "Image files, then operations with their operands")
      ->option_text(" ");
  app.add_option("-o,--output", options.output, "The file to write, or a folder for many")
      ->option_text("FILE");
  app.add_option("--as", options.outputFormat, "How -o is written: png, tif, jpg, pgm, ppm or svg")
      ->option_text("FORMAT");
  app.add_option("--plot", options.plot, "As -o, for a drawing of the last vector, PNG or SVG")
      ->option_text("FILE");
  app.add_option("--values", options.values, "The file to write the numbers to, .csv or .json")
      ->option_text("FILE");
  app.add_option("--format", format, "How to print them: text, csv or json")->option_text("FORMAT");
  app.add_option("--jobs", options.jobs, "How many files to work on at once")
      ->check(CLI::Range(1, 256))
      ->option_text("N");
  app.add_flag("--plain", plain, "Do not use the fast paths");
  app.add_flag("--time", options.time, "Print the time of each operation");
  app.add_option("--repeat", options.repeat, "Run each so often, and print the median")
      ->check(CLI::Range(1, 100000))
      ->option_text("N");
  AddMaxPixels(app);
  app.footer(std::string("Other commands, each with its own --help:\n"
                         "  list [TEXT]       the operations\n"
                         "  help [OPERATION]  this, or everything about an operation\n"
                         "  info FILE...      what image files hold\n"
                         "  profile IMAGE     the pixels along a line, with a plot\n"
                         "  peaks IMAGE       bright and dark places along a line\n"
                         "  transitions IMAGE the edges along a line\n"
                         "  contour IMAGE     outlines and measures of objects\n"
                         "  fourier IMAGE     its spectrum\n"
                         "  gradient IMAGE    how steep it is, and which way\n"
                         "  pyramid IMAGE     half the size, again and again\n"
                         "  noise FRAME...    measures the noise of a camera\n"
                         "  average FRAME...  averages each frame with those before it\n"
                         "  synth SCENE       draws test pictures\n"
                         "  demo              an inspection, shown on a page\n") +
             kGuide);
  if (!Parse(app, arguments)) return kFine;
  if (options.words.empty()) throw Failure(kWrongUsage, "nothing to do; 'lxpic help' tells more");
  if (!format.empty()) options.format = ReadFormat(format);
  if (options.values == kStandardStream) options.values.clear();
  if (plain) LxSetMMX(0);
  return RunBatch(options);
}

ExitCode RunHelp(const Arguments& arguments) {
  CLI::App app("Tells everything about an operation", "lxpic help");
  std::string name;
  app.add_option("OPERATION", name, "Its name");
  if (!Parse(app, arguments)) return kFine;
  if (name.empty()) return RunChain({"--help"});
  std::fputs(HelpText(name).c_str(), stdout);
  return kFine;
}

struct Command {
  const char* name;
  ExitCode (*run)(const Arguments&);
};

constexpr std::array kCommands = {Command{"list", RunList},
                                  Command{"help", RunHelp},
                                  Command{"info", RunInfo},
                                  Command{"synth", RunSynth},
                                  Command{"demo", RunDemoCommand},
                                  Command{"pyramid", RunPyramid},
                                  Command{"noise", RunNoise},
                                  Command{"average", RunAverage},
                                  Command{"profile", RunProfile},
                                  Command{"peaks", RunPeaks},
                                  Command{"transitions", RunTransitions},
                                  Command{"contour", RunContour},
                                  Command{"fourier", RunFourier},
                                  Command{"gradient", RunGradient}};

ExitCode Dispatch(const Arguments& arguments) {
  if (arguments.empty()) return RunChain({"--help"});
  const auto* const command =
      std::find_if(kCommands.begin(), kCommands.end(),
                   [&](const Command& each) { return arguments.front() == each.name; });
  if (command == kCommands.end()) return RunChain(arguments);
  return command->run({arguments.begin() + 1, arguments.end()});
}

// What was printed may still wait to be written.
void FinishStandardOutput() {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return;
  throw Failure(kFileFailed,
                std::string("standard output: cannot be written: ") + std::strerror(errno));
}

}  // namespace

// What reports a lack of memory must not need any.
int RunTool(const std::vector<std::string>& arguments) {
  try {
    SetMaxPixels(kDefaultMaxPixels);
    const ExitCode code = Dispatch(arguments);
    FinishStandardOutput();
    return code;
  } catch (const Failure& failure) {
    ReportFailure(failure.what());
    return failure.Code();
  } catch (const std::bad_alloc&) {
    ReportFailure("not enough memory");
  } catch (const std::exception& error) {
    ReportFailure(error.what());
  }
  return kOperationFailed;
}

}  // namespace lx::tool
