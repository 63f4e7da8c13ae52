#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/files.h"
#include "platform/linux/tree/store.h"

namespace domtree {

/// Writes a tree as UTF-8. What it writes, the parser reads back: it fails for a tree without an
/// element, with a character that XML does not have, with a prefix that is not declared, or with
/// more levels, longer names or texts or more bytes than the parser takes.
class Writer {
 public:
  Writer(const Store& store, files::AtomicFile& file) : m_store(store), m_file(file) {}

  /// False when the file is not to be committed.
  bool Write();

 private:
  void WriteTree(const Node& top);
  void Open(const Node& node);
  void Close(const Node& element);
  void OpenElement(const Node& element);
  void Indent(std::uint32_t level);

  void Put(std::string_view bytes);
  void Put(char byte) {
    *Room(1) = byte;
    ++m_used;
  }
  /// Makes room for `size` bytes, at most kChunk, and answers where they go. What was put there is
  /// then counted by Advance.
  char* Room(std::size_t size);
  void Advance(const char* end) { m_used = static_cast<std::size_t>(end - m_buffer.get()); }
  void Flush();
  void PutName(NameId name);
  /// `name` is one of the tree's names.
  void PutAttribute(std::string_view name, std::string_view value);
  /// Text with references in place of the bytes of the `escaped` classes.
  void PutText(std::string_view text, std::uint8_t escaped);
  /// The same to a place with room for the longest reference per byte; answers its end.
  char* PutEscaped(char* place, std::string_view text, std::uint8_t escaped);
  void CheckName(std::string_view name);

  static constexpr std::size_t kChunk = std::size_t{256} * 1024;

  const Store& m_store;
  files::AtomicFile& m_file;
  const std::unique_ptr<char[]> m_buffer{new char[kChunk]};
  std::size_t m_used = 0;
  std::uint64_t m_total = 0;
  std::uint32_t m_level = 0;
  bool m_failed = false;
};

}  // namespace domtree
