#include "kit/reading/xml_fault.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "kit/text/ascii.h"
#include "kit/text/utf.h"
#include "kit/xml/text/characters.h"
#include "kit/xml/text/damage.h"

namespace zortunedex::kit {

namespace {

using markup::IsCharacter;
using markup::kMostAttributes;
using markup::kMostLevels;
constexpr std::string_view kMark = markup::kByteOrderMark;

bool IsBlank(char byte) { return markup::Is(byte, markup::kBlankByte); }
bool BeginsName(char byte) { return markup::Is(byte, markup::kNameStartByte); }
bool IsInName(char byte) { return markup::Is(byte, markup::kNameByte); }

std::string Quoted(std::string_view name) { return "<" + std::string(name) + ">"; }

std::string CodePoint(std::uint32_t character) {
  char text[16];
  std::snprintf(text, sizeof(text), "U+%04X", static_cast<unsigned>(character));
  return text;
}

/// What stops the search.
struct Found {
  std::size_t offset;
  std::string reason;
};

struct OpenElement {
  std::string_view name;
  std::size_t offset;
};

class Search {
 public:
  explicit Search(std::string_view xml) : m_xml(xml) {
    if (xml.starts_with(kMark)) m_at = kMark.size();
    m_encoding = DeclaredEncoding();
    m_isUtf8 = m_encoding.empty();
  }

  std::optional<XmlFault> Run() {
    try {
      if (m_xml.size() == m_at) throw Found{m_at, "the file is empty"};
      CheckCharacters();
      CheckMarkup();
    } catch (const Found& found) {
      return At(found);
    }
    // Some parsers take these, so they count where nothing else is wrong.
    if (m_later) return At(*m_later);
    if (!m_isUtf8) {
      return At({0, "its encoding '" + std::string(m_encoding) +
                        "' is not known, or has other characters"});
    }
    return std::nullopt;
  }

 private:
  /// The encoding that the declaration names, unless it is UTF-8.
  std::string_view DeclaredEncoding() const {
    const std::string_view text = m_xml.substr(m_at);
    if (!text.starts_with("<?xml")) return {};
    const std::string_view declaration = text.substr(0, text.find("?>"));
    const std::size_t key = declaration.find("encoding");
    const std::size_t quote = declaration.find_first_of("'\"", key);
    if (key == std::string_view::npos || quote == std::string_view::npos) return {};
    const std::size_t end = declaration.find(declaration[quote], quote + 1);
    if (end == std::string_view::npos) return {};
    const std::string_view name = declaration.substr(quote + 1, end - quote - 1);
    return EqualIgnoringCase(name, "utf-8") || EqualIgnoringCase(name, "utf8") ? std::string_view()
                                                                               : name;
  }

  XmlFault At(const Found& found) const {
    XmlFault fault{1, 1, found.reason};
    const std::size_t start = m_xml.starts_with(kMark) ? kMark.size() : 0;
    for (std::size_t i = start; i < found.offset; ++i) {
      const char byte = m_xml[i];
      if (byte == '\n' || (byte == '\r' && m_xml.substr(i + 1, 1) != "\n")) {
        ++fault.line;
        fault.column = 1;
      } else if (byte != '\r' && (!m_isUtf8 || (byte & 0xC0) != 0x80)) {
        ++fault.column;
      }
    }
    return fault;
  }

  [[noreturn]] void Fail(const std::string& reason) const { throw Found{m_at, reason}; }
  void Later(std::size_t offset, const std::string& reason) {
    if (!m_later) m_later = Found{offset, reason};
  }

  /// Stops the markup's search in front of the first character that no document may hold.
  void CheckCharacters() {
    std::string_view rest = m_xml.substr(m_at);
    while (!rest.empty()) {
      const std::size_t offset = m_xml.size() - rest.size();
      if (!m_isUtf8) {
        const auto byte = static_cast<unsigned char>(rest.front());
        if (!IsCharacter(byte)) return LimitTo(offset, "XML has no character " + CodePoint(byte));
        rest.remove_prefix(1);
        continue;
      }
      const std::optional<std::uint32_t> character = utf::Next(rest);
      if (!character) return LimitTo(offset, "these bytes are no UTF-8");
      if (!IsCharacter(*character)) {
        return LimitTo(offset, "XML has no character " + CodePoint(*character));
      }
    }
  }

  void LimitTo(std::size_t offset, const std::string& reason) { m_limit = Found{offset, reason}; }

  std::string_view Rest() const { return m_xml.substr(m_at); }
  bool IsAtEnd() const { return m_at >= m_xml.size(); }

  void Advance(std::size_t to) {
    if (m_limit && to > m_limit->offset) throw *m_limit;
    m_at = to;
  }

  /// Goes past the next `end`; what began at the present place is not closed otherwise.
  void SkipPast(std::string_view end, const std::string& what) {
    const std::size_t found = m_xml.find(end, m_at);
    if (found == std::string_view::npos) {
      if (m_limit) throw *m_limit;
      Fail(what + " that does not end");
    }
    Advance(found + end.size());
  }

  std::string_view TakeName() {
    std::size_t end = m_at;
    while (end < m_xml.size() && IsInName(m_xml[end])) ++end;
    const std::string_view name = m_xml.substr(m_at, end - m_at);
    Advance(end);
    return name;
  }

  void SkipBlanks() { Advance(markup::SkipBlanks(m_xml, m_at)); }

  void CheckMarkup() {
    while (!IsAtEnd()) {
      TakeText();
      if (!IsAtEnd()) TakeMarkup();
    }
    if (!m_open.empty()) FailAtEnd("</" + std::string(m_open.back().name) + ">");
    if (!m_sawElement) Fail("the file ends before its first element");
  }

  [[noreturn]] void FailAtEnd(const std::string& missing) {
    if (m_limit) throw *m_limit;
    throw Found{m_xml.size(), "the file ends before " + missing};
  }

  void TakeText() {
    while (!IsAtEnd() && m_xml[m_at] != '<') {
      if (m_open.empty() && !IsBlank(m_xml[m_at])) {
        Fail(m_sawElement ? "something follows the document's end"
                          : "the file does not begin with <");
      }
      if (m_xml[m_at] == '&') {
        TakeReference();
      } else if (Rest().starts_with("]]>")) {
        Fail("]]> stands in a text");
      } else {
        Advance(m_at + 1);
      }
    }
  }

  void TakeReference() {
    const std::size_t end = Rest().find_first_of("; \t\r\n<&\"'", 1);
    if (end == std::string_view::npos || m_xml[m_at + end] != ';' || end == 1) {
      Fail("an & stands alone; &amp; is meant");
    }
    const std::string_view name = Rest().substr(1, end - 1);
    if (name.starts_with('#')) {
      const bool isHex = name.starts_with("#x");
      const std::string digits = (isHex ? "0x" : "") + std::string(name.substr(isHex ? 2 : 1));
      const auto number = ParseNumber(digits, 0, 0x10FFFF);
      if (!number || !IsCharacter(static_cast<std::uint32_t>(*number))) {
        Fail("&" + std::string(name) + "; is no character of XML");
      }
    } else {
      static constexpr std::string_view kKnown[] = {"amp", "lt", "gt", "quot", "apos"};
      if (std::find(std::begin(kKnown), std::end(kKnown), name) == std::end(kKnown)) {
        Fail("&" + std::string(name) + "; is not known; &amp; may be meant for &");
      }
    }
    Advance(m_at + end + 1);
  }

  void TakeMarkup() {
    const std::string_view rest = Rest();
    if (rest.starts_with("<!--")) return SkipPast("-->", "a comment");
    if (rest.starts_with("<![CDATA[")) return SkipPast("]]>", "a CDATA section");
    if (rest.starts_with("<?")) return TakeInstruction();
    if (rest.starts_with("<!")) return TakeDocumentType();
    if (rest.starts_with("</")) return TakeEnd();
    TakeStart();
  }

  void TakeInstruction() {
    const bool isFirst = m_at == 0 || (m_at == kMark.size() && m_xml.starts_with(kMark));
    if (!isFirst && Rest().starts_with("<?xml") &&
        IsBlank(m_xml[std::min(m_at + 5, m_xml.size() - 1)])) {
      Fail("the XML declaration does not stand at the beginning");
    }
    SkipPast("?>", "an instruction");
  }

  void TakeDocumentType() {
    if (!Rest().starts_with("<!DOCTYPE")) Fail("a < begins no element; &lt; is meant");
    Later(m_at, "a document type (DTD) is not allowed");
    std::size_t depth = 0;
    for (; !IsAtEnd(); Advance(m_at + 1)) {
      if (m_xml[m_at] == '[') ++depth;
      if (m_xml[m_at] == ']' && depth > 0) --depth;
      if (m_xml[m_at] == '>' && depth == 0) return Advance(m_at + 1);
    }
    FailAtEnd("its document type does");
  }

  void TakeEnd() {
    const std::size_t start = m_at;
    Advance(m_at + 2);
    const std::string_view name = TakeName();
    SkipBlanks();
    if (IsAtEnd()) FailAtEnd("</" + std::string(name) + "> does");
    if (m_xml[m_at] != '>') Fail("</" + std::string(name) + " is not closed");
    const std::string closing = "</" + std::string(name) + ">";
    if (m_open.empty()) throw Found{start, closing + " closes nothing"};
    if (m_open.back().name != name) {
      throw Found{start, closing + " stands where " + Quoted(m_open.back().name) + " of line " +
                             std::to_string(At({m_open.back().offset, {}}).line) + " is open"};
    }
    Advance(m_at + 1);
    m_open.pop_back();
  }

  void TakeStart() {
    const std::size_t start = m_at;
    if (m_at + 1 >= m_xml.size()) FailAtEnd("an element's name");
    if (!BeginsName(m_xml[m_at + 1])) Fail("a < begins no element; &lt; is meant");
    if (m_open.empty() && m_sawElement) Fail("a second element follows the document's own");
    Advance(m_at + 1);
    const OpenElement element{TakeName(), start};
    m_sawElement = true;
    if (TakeAttributes(element)) return;
    m_open.push_back(element);
    if (m_open.size() > kMostLevels) Later(start, "elements stand in more than 256 levels");
  }

  /// True when the element is closed at once.
  bool TakeAttributes(const OpenElement& element) {
    std::vector<std::string_view> names;
    while (true) {
      const std::size_t behind = m_at;
      SkipBlanks();
      if (IsAtEnd()) FailAtEnd(Quoted(element.name) + " does");
      if (m_xml[m_at] == '>') {
        Advance(m_at + 1);
        return false;
      }
      if (Rest().starts_with("/>")) {
        Advance(m_at + 2);
        return true;
      }
      if (m_xml[m_at] == '<') {
        Fail(Quoted(element.name) + " of line " + std::to_string(At({element.offset, {}}).line) +
             " is not closed");
      }
      if (m_at == behind || !BeginsName(m_xml[m_at])) {
        Fail("no attribute begins here; inside of a value &quot; is meant for \"");
      }
      TakeAttribute(element, names);
    }
  }

  void TakeAttribute(const OpenElement& element, std::vector<std::string_view>& names) {
    const std::size_t start = m_at;
    const std::string_view name = TakeName();
    SkipBlanks();
    if (IsAtEnd()) FailAtEnd(Quoted(element.name) + " does");
    if (m_xml[m_at] != '=') {
      Fail("no value follows " + std::string(name) + "; inside of a value &quot; is meant for \"");
    }
    Advance(m_at + 1);
    SkipBlanks();
    if (IsAtEnd()) FailAtEnd(Quoted(element.name) + " does");
    TakeValue(element, name);
    if (std::find(names.begin(), names.end(), name) != names.end()) {
      throw Found{start, std::string(name) + " stands twice in " + Quoted(element.name)};
    }
    names.push_back(name);
    if (names.size() > kMostAttributes) Later(start, "an element has more than 1024 attributes");
  }

  void TakeValue(const OpenElement& element, std::string_view name) {
    const char quote = m_xml[m_at];
    if (quote != '"' && quote != '\'') Fail("the value of " + std::string(name) + " is not quoted");
    Advance(m_at + 1);
    while (!IsAtEnd() && m_xml[m_at] != quote) {
      if (m_xml[m_at] == '<')
        Fail("a < stands in the value of " + std::string(name) + "; &lt; is meant");
      if (m_xml[m_at] == '&') {
        TakeReference();
      } else {
        Advance(m_at + 1);
      }
    }
    if (IsAtEnd()) FailAtEnd(Quoted(element.name) + " does");
    Advance(m_at + 1);
  }

  std::string_view m_xml;
  std::size_t m_at = 0;
  std::string_view m_encoding;  ///< unless it is UTF-8
  bool m_isUtf8 = true;
  bool m_sawElement = false;
  std::vector<OpenElement> m_open;
  std::optional<Found> m_limit;  ///< the first character that no document may hold
  std::optional<Found> m_later;
};

}  // namespace

std::optional<XmlFault> FindXmlFault(std::string_view xml) {
  const bool isWide = xml.starts_with("\xFF\xFE") || xml.starts_with("\xFE\xFF") ||
                      (xml.size() > 1 && (xml[0] == '\0' || xml[1] == '\0'));
  if (isWide) return std::nullopt;
  return Search(xml).Run();
}

}  // namespace zortunedex::kit
