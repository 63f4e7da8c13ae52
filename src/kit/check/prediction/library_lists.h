#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "kit/check/subject/channel_tree.h"
#include "kit/files/scratch_directory.h"
#include "kit/model/channel.h"
#include "kit/model/database.h"

namespace zortunedex::kit::check {

/// Lets the library read the lists of a channel file one by one: it loads one at a time. A large
/// file is read as a whole for the first of them alone, and a part of it for each of the others, so
/// that all take time proportional to its size.
class LibraryLists {
 public:
  /// Copies the bytes. Failure when that does not work.
  explicit LibraryLists(std::string_view bytes);

  /// Opens the first list, as far as the beginning of the file tells which one it is: most of the
  /// time is spent so, and nobody has to have read the file before.
  void OpenFirst();

  using Take = std::function<void(const Channel& channel)>;
  /// Gives every channel of a list, in its order. The document is that of the bytes; null where
  /// they are others.
  void Walk(const ChannelGroup& group, const markup::Document* document, const Take& take);

 private:
  using DatabasePtr = std::unique_ptr<const Database>;

  DatabasePtr Open(const ChannelGroup& group);

  const ScratchDirectory m_scratch;
  const std::size_t m_size;
  const std::string m_beginning;
  DatabasePtr m_first;
  GroupKey m_firstKey;
  std::optional<ScratchDirectory> m_part;
  std::size_t m_read = 0;
};

}  // namespace zortunedex::kit::check
