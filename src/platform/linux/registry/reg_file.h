#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

/// The content of a file in the .reg export format. Names of keys and values compare without regard
/// to case and keep the spelling that they came with. A key exists when it or a key below it stands
/// in the file.
class RegFile {
 public:
  /// False, and nothing kept, for bytes that are no such file. No bytes at all are an empty one.
  /// Lines that cannot be understood, and comments, are left out.
  bool Parse(std::string_view bytes);
  /// False when the file held bytes that are no text: writing it anew would lose them.
  bool IsWhole() const { return m_isWhole; }
  /// UTF-16LE with its mark, lines ending in CR LF, keys sorted by name.
  std::string Format() const;

  bool HasKey(std::u16string_view path) const;
  bool HasSubKeys(std::u16string_view path) const;
  void AddKey(std::u16string_view path);
  /// The key above stays, also when this was the only one that showed it.
  void DeleteTree(std::u16string_view path);

  /// Null when there is no such value or it is no text (of either kind, expandable or not). An
  /// empty name is the default value.
  const std::u16string* FindText(std::u16string_view path, std::u16string_view name) const;
  void SetText(std::u16string_view path, std::u16string_view name, std::u16string_view value);
  void SetNumber(std::u16string_view path, std::u16string_view name, std::uint32_t value);
  enum class Kind { Binary, TextList };
  /// For a text list the bytes are its UTF-16LE texts, each with its terminator, and one more.
  void SetBytes(std::u16string_view path, std::u16string_view name, Kind kind,
                std::string_view bytes);
  /// False when there is no such value.
  bool DeleteValue(std::u16string_view path, std::u16string_view name);

 private:
  struct Value {
    std::u16string name;
    std::optional<std::u16string> text;
    std::u16string data;  ///< what the file has behind the equals sign, where quotes cannot say it
  };
  struct Key {
    std::u16string path;
    std::map<std::u16string, Value, std::less<>> values;  ///< by folded name
  };
  using Keys = std::map<std::u16string, Key, std::less<>>;  ///< by folded path
  friend class RegReader;

  Key& Obtain(std::u16string_view path);
  void Set(std::u16string_view path, Value value);

  Keys m_keys;
  bool m_isWhole = true;
};
