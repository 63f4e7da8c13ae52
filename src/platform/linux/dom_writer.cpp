#include "platform/linux/dom_writer.h"

#include <algorithm>
#include <array>

#include "platform/linux/dom_namespaces.h"

namespace domtree {
namespace {

constexpr std::size_t kChunk = std::size_t{256} * 1024;
// The parser's own limits.
constexpr std::size_t kLongestName = 50000;
constexpr std::size_t kLongestText = 10000000;

// Classes of bytes.
constexpr std::uint8_t kInAttribute = 1;  ///< needs a reference in an attribute
constexpr std::uint8_t kInText = 2;       ///< needs a reference in a text
constexpr std::uint8_t kForbidden = 4;    ///< XML has no such character
constexpr std::uint8_t kSuspect = 8;      ///< begins U+FFFE and U+FFFF, among others

constexpr std::array<std::uint8_t, 256> kClasses = [] {
  std::array<std::uint8_t, 256> classes{};
  std::fill_n(classes.begin(), 0x20, kForbidden);
  classes['\t'] = classes['\n'] = kInAttribute;
  classes['\r'] = classes['&'] = classes['<'] = kInAttribute | kInText;
  classes['"'] = kInAttribute;
  classes['>'] = kInText;
  classes[0xEF] = kSuspect;
  return classes;
}();

std::uint8_t ClassOf(char byte) { return kClasses[static_cast<unsigned char>(byte)]; }

std::string_view ReferenceFor(char byte) {
  switch (byte) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\t':
      return "&#9;";
    case '\n':
      return "&#10;";
    default:
      return "&#13;";
  }
}

std::string_view DeclarationText(Declaration declaration) {
  switch (declaration) {
    case Declaration::Plain:
      return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";
    case Declaration::Standalone:
      return "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n";
    case Declaration::NotStandalone:
      return "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"no\"?>\r\n";
    default:
      return {};
  }
}

bool IsText(const Node* node) { return node && node->GetKind() == Kind::Text; }

}  // namespace

bool Writer::Write() {
  if (!m_file.IsOpen() || m_store.RootElement() == nullptr) return false;
  Put(DeclarationText(m_store.GetDeclaration()));
  for (const Node* top = m_store.Root().First(); top; top = top->Next()) {
    WriteTree(*top);
    Put("\r\n");
  }
  Flush();
  return !m_failed;
}

void Writer::WriteTree(const Node& top) {
  const Node* node = &top;
  while (!m_failed) {
    Open(*node);
    if (node->First()) {
      node = node->First();
      ++m_level;
      continue;
    }
    while (node != &top && node->Next() == nullptr) {
      node = node->Parent();
      --m_level;
      Close(*node);
    }
    if (node == &top) return;
    node = node->Next();
  }
}

void Writer::Open(const Node& node) {
  // White space beside a text would become a part of it.
  if (m_level > 0 && node.HasSpaceBefore() && !IsText(node.Previous())) Indent(m_level);
  switch (node.GetKind()) {
    case Kind::Element:
      return OpenElement(node);
    case Kind::Text:
      return PutText(node.Text(), kInText);
    case Kind::Cdata:
      Put("<![CDATA[");
      PutText(node.Text(), 0);
      return Put("]]>");
    case Kind::Comment:
      Put("<!--");
      PutText(node.Text(), 0);
      return Put("-->");
    default:
      Put("<?");
      PutName(node.Name());
      if (!node.Text().empty()) Put(" ");
      PutText(node.Text(), 0);
      return Put("?>");
  }
}

void Writer::OpenElement(const Node& element) {
  m_failed = m_failed || m_level >= kDeepest || !HasSoundPrefixes(element);
  Put("<");
  PutName(element.Name());
  for (std::uint32_t i = 0; i < element.AttributeCount(); ++i) {
    const Attribute& attribute = element.At(i);
    Put(" ");
    PutName(attribute.Name());
    Put("=\"");
    PutText(element.ValueOf(attribute), kInAttribute);
    Put("\"");
  }
  Put(element.First() ? ">" : "/>");
}

void Writer::Close(const Node& element) {
  if (element.HasSpaceAtEnd() && !IsText(element.Last())) Indent(m_level);
  Put("</");
  PutName(element.Name());
  Put(">");
}

void Writer::Indent(std::uint32_t level) {
  Put("\r\n");
  m_buffer.append(level, '\t');
}

void Writer::Put(std::string_view bytes) {
  m_buffer += bytes;
  if (m_buffer.size() >= kChunk) Flush();
}

void Writer::Flush() {
  m_total += m_buffer.size();
  m_failed = m_failed || m_total > FileBytes::kLargest || !m_file.Write(m_buffer);
  m_buffer.clear();
}

void Writer::PutName(NameId name) {
  const std::string_view text = m_store.GetNames().Text(name);
  m_failed = m_failed || text.size() > kLongestName;
  Put(text);
}

void Writer::PutText(std::string_view text, std::uint8_t escaped) {
  m_failed = m_failed || text.size() > kLongestText;
  const auto stops = static_cast<std::uint8_t>(escaped | kForbidden | kSuspect);
  std::size_t done = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::uint8_t found = ClassOf(text[i]) & stops;
    if (found == 0) continue;
    if (found == kForbidden) m_failed = true;
    if (found == kSuspect) {
      const std::string_view character = text.substr(i, 3);
      if (character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF") m_failed = true;
    }
    if (found & escaped) {
      Put(text.substr(done, i - done));
      Put(ReferenceFor(text[i]));
      done = i + 1;
    }
  }
  Put(text.substr(done));
}

}  // namespace domtree
