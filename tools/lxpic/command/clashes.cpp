// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/clashes.h"

#include <map>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/file/identity.h"
#include "tools/lxpic/file/input_file.h"
#include "tools/lxpic/report/drawing_format.h"

namespace lx::tool {

namespace {

class Clashes {
 public:
  void Read(const std::string& path) {
    const std::string identity = IdentityOf(path == kStandardStream ? "/dev/stdin" : path);
    if (!identity.empty()) readers.emplace(identity, path);
  }

  // Checks a file that `what` is written to: the result of `input`, or the numbers where there is
  // none.
  void Write(const std::string& path, const std::string& input, const char* what, bool mayReplace) {
    if (path.empty()) return;
    const std::string identity = IsStandardOutput(path) ? kStandardStream : IdentityOf(path);
    if (identity.empty()) return;
    if (!written.insert({identity, input}).second) {
      throw Failure(kWrongUsage, (written[identity] == input ? "two results" : "two inputs") +
                                     (" would be written to " + path));
    }
    const auto reader = readers.find(identity);
    if (reader == readers.end() || mayReplace) return;
    const bool isOwn = reader->second == input;
    throw Failure(kWrongUsage, reader->second + " would be overwritten by " +
                                   (isOwn || input.empty() ? what : "the result of " + input));
  }

 private:
  std::map<std::string, std::string> readers;
  std::map<std::string, std::string> written;  // the input of what is written
};

// Where a drawing goes whose name says no format.
std::string DrawingBeside(const std::string& path) {
  return path.empty() || DrawingFormatOf(path) || IsStream(path) ? "" : path + ".png";
}

}  // namespace

void CheckClashes(const CommandFiles& files) {
  Clashes clashes;
  for (const std::string& word : files.steps) clashes.Read(word);
  for (const RunFiles& run : files.runs) clashes.Read(run.input);
  for (const auto& [input, output, plot] : files.runs) {
    clashes.Write(output, input, "its result", files.mayReplace);
    clashes.Write(DrawingBeside(output), input, "its drawing", false);
    clashes.Write(plot, input, "its drawing", false);
    clashes.Write(DrawingBeside(plot), input, "its drawing", false);
  }
  clashes.Write(files.values, "", "the numbers", false);
}

}  // namespace lx::tool
