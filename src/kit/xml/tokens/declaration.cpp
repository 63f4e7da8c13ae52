#include "kit/xml/tokens/declaration.h"

#include <algorithm>
#include <optional>

#include "kit/text/ascii.h"
#include "kit/xml/text/characters.h"

namespace zortunedex::kit::markup {
namespace {

bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

bool IsVersion(std::string_view text) {
  return text.starts_with("1.") && std::all_of(text.begin() + 2, text.end(), IsDigit);
}

bool IsEncodingName(std::string_view text) {
  if (text.empty() || !Is(text[0], kNameStartByte) || Is(text[0], kUnusualByte)) return false;
  return text[0] != '_' && std::all_of(text.begin(), text.end(), [](char byte) {
           return Is(byte, kNameByte) && !Is(byte, kUnusualByte);
         });
}

/// Takes what a declaration is made of from its front.
class Parts {
 public:
  explicit Parts(std::string_view text) : m_rest(text) {}

  bool TakeBlanks() {
    const std::size_t size = SkipBlanks(m_rest, 0);
    m_rest.remove_prefix(size);
    return size > 0;
  }
  /// The value of the part of that name; nothing when another stands here, or when it is broken.
  std::optional<std::string_view> Take(std::string_view name) {
    if (!m_rest.starts_with(name)) return std::nullopt;
    m_rest.remove_prefix(name.size());
    TakeBlanks();
    if (!m_rest.starts_with('=')) return std::nullopt;
    m_rest.remove_prefix(1);
    TakeBlanks();
    if (!m_rest.starts_with('"') && !m_rest.starts_with('\'')) return std::nullopt;
    const std::size_t end = m_rest.find(m_rest[0], 1);
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view value = m_rest.substr(1, end - 1);
    m_rest.remove_prefix(end + 1);
    return value;
  }
  bool StartsWith(std::string_view text) const { return m_rest.starts_with(text); }

 private:
  std::string_view m_rest;
};

/// The encoding of one whose other parts may be broken.
std::string_view EncodingIn(std::string_view text) {
  const std::size_t place = text.find("encoding");
  if (place == std::string_view::npos) return {};
  const std::string_view name = Parts(text.substr(place)).Take("encoding").value_or("");
  return IsEncodingName(name) ? name : std::string_view();
}

bool IsSound(std::string_view text) {
  Parts parts(text.substr(std::string_view("<?xml").size()));
  if (!parts.TakeBlanks()) return false;
  const auto version = parts.Take("version");
  if (!version || !IsVersion(*version)) return false;
  bool hasBlank = parts.TakeBlanks();
  if (parts.StartsWith("encoding")) {
    const auto encoding = parts.Take("encoding");
    if (!hasBlank || !encoding || !IsEncodingName(*encoding)) return false;
    hasBlank = parts.TakeBlanks();
  }
  if (parts.StartsWith("standalone")) {
    const auto standalone = parts.Take("standalone");
    if (!hasBlank || !standalone || (*standalone != "yes" && *standalone != "no")) return false;
    parts.TakeBlanks();
  }
  return parts.StartsWith("?>");
}

}  // namespace

Declaration ReadDeclaration(std::string_view text) {
  const std::string_view encoding = EncodingIn(text);
  const bool isReadable = encoding.empty() || IsUtf8Name(encoding);
  return {isReadable && IsSound(text), encoding};
}

bool IsUtf8Name(std::string_view name) {
  return EqualIgnoringCase(name, "UTF-8") || EqualIgnoringCase(name, "UTF8");
}

bool IsWideName(std::string_view name) {
  for (const std::string_view family :
       {"UTF-16", "UTF16", "UTF-32", "UTF32", "UCS-", "UCS2", "UCS4", "ISO-10646-", "UNICODE"}) {
    if (EqualIgnoringCase(name.substr(0, family.size()), family)) return true;
  }
  return false;
}

}  // namespace zortunedex::kit::markup
