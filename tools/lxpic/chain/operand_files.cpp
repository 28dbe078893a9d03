// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/chain/operand_files.h"

#include "tools/lxpic/file/files.h"
#include "tools/lxpic/file/input_file.h"
#include "tools/lxpic/value/tables.h"

namespace lx::tool {

template <class Content>
Content OperandFiles::Find(Entries<Content>& entries, const std::string& word,
                           Content (*read)(const std::string& path)) {
  const std::scoped_lock lock(mutex);
  auto found = entries.find(word);
  if (found == entries.end()) {
    Entry<Content> entry;
    try {
      entry.content = read(word == kStandardStream ? word : (start / word).string());
    } catch (const Failure& failure) {
      entry.failure = failure;
    }
    found = entries.emplace(word, std::move(entry)).first;
  }
  if (found->second.failure) throw Failure(*found->second.failure);
  return found->second.content;
}

ImageValue OperandFiles::Image(const std::string& word) { return Find(images, word, ReadImage); }

std::string OperandFiles::TableText(const std::string& word) {
  return Find(tables, word, ReadTableText);
}

}  // namespace lx::tool
