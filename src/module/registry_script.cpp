#include "module/registry_script.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace {

using Key = RegistryScript::Key;
using Kind = ScriptToken::Kind;

constexpr std::size_t kLongestName = 255;

constexpr std::string_view kSharedKeys[] = {
    "APPID",    "CLSID",    "COMPONENT CATEGORIES",
    "FILETYPE", "HARDWARE", "INTERFACE",
    "MIME",     "SAM",      "SECURITY",
    "SOFTWARE", "SYSTEM",   "TYPELIB",
};

bool IsShared(const std::string& name) {
  const ScriptToken word = {Kind::Word, name};
  return std::any_of(std::begin(kSharedKeys), std::end(kSharedKeys),
                     [&](std::string_view shared) { return word.Is(shared); });
}

bool IsPlain(std::string_view text) {
  return std::none_of(text.begin(), text.end(),
                      [](char byte) { return static_cast<unsigned char>(byte) < 0x20; });
}

std::optional<std::uint32_t> ToNumber(std::string_view digits) {
  int base = 10;
  const std::string_view start = digits.substr(0, 2);
  if (start == "0x" || start == "0X" || start == "&H" || start == "&h") {
    base = 16;
    digits.remove_prefix(2);
  }
  std::uint32_t value = 0;
  const char* const end = digits.data() + digits.size();
  const auto [last, error] = std::from_chars(digits.data(), end, value, base);
  if (error != std::errc() || last != end) return std::nullopt;
  return value;
}

std::optional<RegistryScript::Bytes> ToBytes(std::string_view digits) {
  RegistryScript::Bytes bytes;
  if (digits.size() % 2 != 0) return std::nullopt;
  for (; !digits.empty(); digits.remove_prefix(2)) {
    std::uint8_t byte = 0;
    const auto [last, error] = std::from_chars(digits.data(), digits.data() + 2, byte, 16);
    if (error != std::errc() || last != digits.data() + 2) return std::nullopt;
    bytes.bytes += static_cast<char>(byte);
  }
  return bytes;
}

/// None when a text of the list is empty; an empty list is written as an empty text.
std::optional<RegistryScript::Texts> ToTexts(std::string_view list) {
  static constexpr std::string_view kSeparator = "\\0";
  RegistryScript::Texts texts;
  while (!list.empty()) {
    const std::size_t end = list.find(kSeparator);
    if (end == 0) return std::nullopt;
    texts.emplace_back(list.substr(0, end));
    list.remove_prefix(end == std::string_view::npos ? list.size() : end + kSeparator.size());
  }
  return texts;
}

/// Takes one script apart. Every method answers false where the script breaks a rule.
class Parser {
 public:
  explicit Parser(std::string_view script) : m_reader(script) {}

  bool ParseBlocks(std::vector<RegistryScript::Block>& blocks) {
    do {
      RegistryScript::Block& block = blocks.emplace_back();
      if (!TakeRoot(block.root) || Token().kind != Kind::Open) return false;
      if (!ParseKeys(block.top, 0)) return false;
    } while (Token().kind != Kind::End);
    return true;
  }

 private:
  const ScriptToken& Token() const { return m_reader.Current(); }

  bool TakeWord(std::string_view capitals) {
    if (!Token().Is(capitals)) return false;
    m_reader.Advance();
    return true;
  }

  bool TakeRoot(registry::Root& root) {
    if (TakeWord("HKCR") || TakeWord("HKEY_CLASSES_ROOT")) {
      root = registry::Root::ClassesRoot;
    } else if (TakeWord("HKCU") || TakeWord("HKEY_CURRENT_USER")) {
      root = registry::Root::CurrentUser;
    } else if (TakeWord("HKLM") || TakeWord("HKEY_LOCAL_MACHINE")) {
      root = registry::Root::LocalMachine;
    } else {
      return false;
    }
    return true;
  }

  /// A word of the language is a name only in quotes.
  bool IsReserved() const {
    static constexpr std::string_view kWords[] = {"=", "VAL", "DELETE", "NOREMOVE", "FORCEREMOVE"};
    return std::any_of(std::begin(kWords), std::end(kWords),
                       [&](std::string_view word) { return Token().Is(word); });
  }

  bool TakeName(std::string& name) {
    if (IsReserved() || !Token().IsName() || Token().text.empty() ||
        Token().text.size() > kLongestName)
      return false;
    if (!IsPlain(Token().text)) return false;
    name = Token().text;
    m_reader.Advance();
    return true;
  }

  /// From the brace that opens to behind the one that closes.
  bool ParseKeys(Key& parent, std::size_t depth) {
    if (depth == RegistryScript::kDeepest) return false;
    m_reader.Advance();
    while (Token().kind != Kind::Close) {
      if (TakeWord("VAL")) {
        // Nothing directly below a root is a value of ours to set.
        if (depth == 0 || !ParseValue(parent.values.emplace_back())) return false;
      } else if (!ParseKey(parent.keys.emplace_back(), depth)) {
        return false;
      }
    }
    m_reader.Advance();
    return true;
  }

  bool ParseKey(Key& key, std::size_t depth) {
    if (TakeWord("NOREMOVE")) {
      key.action = Key::Action::NoRemove;
    } else if (TakeWord("FORCEREMOVE")) {
      key.action = Key::Action::ForceRemove;
    } else if (TakeWord("DELETE")) {
      key.action = Key::Action::Delete;
    }
    if (!TakeName(key.name) || key.name.find('\\') != std::string::npos) return false;
    const bool takesTree =
        key.action == Key::Action::ForceRemove || key.action == Key::Action::Delete;
    if (takesTree && IsShared(key.name)) return false;
    if (key.action == Key::Action::Delete) return true;
    if (TakeWord("=") && !ParseData(key.data.emplace())) return false;
    return Token().kind != Kind::Open || ParseKeys(key, depth + 1);
  }

  bool ParseValue(RegistryScript::Value& value) {
    return TakeName(value.name) && TakeWord("=") && ParseData(value.data);
  }

  template <typename Source>
  static bool Store(std::optional<Source> source, RegistryScript::Data& data) {
    if (source) data = std::move(*source);
    return source.has_value();
  }

  bool ParseData(RegistryScript::Data& data) {
    const ScriptToken kind = Token();
    m_reader.Advance();
    if (!Token().IsName()) return false;
    const std::string text = Token().text;
    m_reader.Advance();
    if (kind.Is("S")) return Store(std::optional(text), data);
    if (kind.Is("D")) return Store(ToNumber(text), data);
    if (kind.Is("M")) return Store(ToTexts(text), data);
    return kind.Is("B") && Store(ToBytes(text), data);
  }

  ScriptReader m_reader;
};

}  // namespace

HRESULT RegistryScript::Parse(std::string_view script, const ScriptReplacements& replacements) {
  blocks.clear();
  std::string replaced;
  const bool isWhole = script.find('\0') == std::string_view::npos &&
                       ReplaceInScript(script, replacements, replaced);
  if (isWhole && Parser(replaced).ParseBlocks(blocks)) return S_OK;
  blocks.clear();
  return E_INVALIDARG;
}
