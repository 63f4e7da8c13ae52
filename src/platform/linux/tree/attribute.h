#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/linux/tree/names.h"

namespace domtree {

/// A name with its value as UTF-8, in twelve bytes: files hold them by the hundred thousand. A
/// value stands where the parser found it in the file's bytes, else, when it is short, in the
/// attribute itself, or in a block of the store's pool.
class Attribute {
 public:
  static constexpr std::size_t kInline = 8;
  /// A pooled value: its length in 32 bits, then the text.
  static constexpr std::size_t kBlockHeader = sizeof(std::uint32_t);

  /// `value` has kInline bytes at most.
  static Attribute Inline(NameId name, std::string_view value) {
    Attribute result(name, static_cast<std::uint32_t>(value.size()));
    const std::uint64_t bytes = Word(value);
    std::memcpy(result.m_bytes, &bytes, kInline);
    return result;
  }
  static Attribute InFile(NameId name, std::uint32_t offset, std::uint32_t length) {
    Attribute result(name, kInFile);
    std::memcpy(result.m_bytes, &offset, sizeof(offset));
    std::memcpy(result.m_bytes + sizeof(offset), &length, sizeof(length));
    return result;
  }
  static Attribute Pooled(NameId name, char* block) {
    Attribute result(name, kPooled);
    std::memcpy(result.m_bytes, &block, sizeof(block));
    return result;
  }

  NameId Name() const { return m_nameAndForm & kNameMask; }
  bool IsPooled() const { return Form() == kPooled; }
  char* Block() const {
    char* block = nullptr;
    std::memcpy(&block, m_bytes, sizeof(block));
    return block;
  }
  /// Valid until the attribute or its element's list of attributes changes.
  std::string_view Value(const char* file) const {
    if (Form() <= kInline) return {m_bytes, Form()};
    if (Form() == kPooled) return {Block() + kBlockHeader, Number(Block())};
    return {file + Number(m_bytes), Number(m_bytes + sizeof(std::uint32_t))};
  }

 private:
  static constexpr std::uint32_t kNameBits = 24;
  static constexpr std::uint32_t kNameMask = (1U << kNameBits) - 1;
  static_assert(kNoName == kNameMask);
  /// Up to kInline the form is a short value's length.
  static constexpr std::uint32_t kInFile = kInline + 1;
  static constexpr std::uint32_t kPooled = kInline + 2;

  Attribute(NameId name, std::uint32_t form) : m_nameAndForm(name | form << kNameBits) {}

  std::uint32_t Form() const { return m_nameAndForm >> kNameBits; }
  static std::uint32_t Number(const char* bytes) {
    std::uint32_t number = 0;
    std::memcpy(&number, bytes, sizeof(number));
    return number;
  }

  /// A short value as one number. Made in a register: bytes that were stored one by one and are
  /// then fetched as one word make the processor wait.
  static std::uint64_t Word(std::string_view value) {
    const char* const first = value.data();
    const std::size_t size = value.size();
    if (size >= 4) {
      return Number(first) | std::uint64_t{Number(first + size - 4)} << (8 * (size - 4));
    }
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < size; ++i) {
      word |= std::uint64_t{static_cast<unsigned char>(first[i])} << (8 * i);
    }
    return word;
  }

  std::uint32_t m_nameAndForm;
  char m_bytes[kInline] = {};
};
static_assert(std::endian::native == std::endian::little);
static_assert(sizeof(Attribute) == 12 && sizeof(char*) == Attribute::kInline);

}  // namespace domtree
