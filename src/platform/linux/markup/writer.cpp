#include "platform/linux/markup/writer.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/linux/tree/namespaces.h"

namespace domtree {
namespace {

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

constexpr std::size_t kLongestReference = 6;

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

/// In steps: names are short, and a copy of their very length takes longer. Answers the name's end;
/// up to a step behind it is written.
char* CopyName(char* place, std::string_view name) {
  for (std::size_t done = 0; done < name.size(); done += Names::kTextStep) {
    std::memcpy(place + done, name.data() + done, Names::kTextStep);
  }
  return place + name.size();
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
  m_failed = m_failed || m_level >= kDeepest ||
             (m_store.GetNames().HasPrefixes() && !HasSoundPrefixes(element));
  Put('<');
  PutName(element.Name());
  const Names& names = m_store.GetNames();
  for (std::uint32_t i = 0; i < element.AttributeCount(); ++i) {
    const Attribute& attribute = element.At(i);
    PutAttribute(names.Text(attribute.Name()), element.ValueOf(attribute));
  }
  if (element.First() == nullptr) Put('/');
  Put('>');
}

void Writer::Close(const Node& element) {
  if (element.HasSpaceAtEnd() && !IsText(element.Last())) Indent(m_level);
  Put('<');
  Put('/');
  PutName(element.Name());
  Put('>');
}

void Writer::Indent(std::uint32_t level) {
  Put("\r\n");
  for (std::uint32_t i = 0; i < level; ++i) Put("\t");
}

char* Writer::Room(std::size_t size) {
  if (size > kChunk - m_used) Flush();
  return m_buffer.get() + m_used;
}

void Writer::Put(std::string_view bytes) {
  for (; bytes.size() > kChunk; bytes.remove_prefix(kChunk)) Put(bytes.substr(0, kChunk));
  Advance(std::copy(bytes.begin(), bytes.end(), Room(bytes.size())));
}

void Writer::Flush() {
  m_total += m_used;
  m_failed = m_failed || m_total > FileBytes::kLargest || !m_file.Write({m_buffer.get(), m_used});
  m_used = 0;
}

void Writer::CheckName(std::string_view name) { m_failed = m_failed || name.size() > kLongestName; }

void Writer::PutName(NameId name) {
  const std::string_view text = m_store.GetNames().Text(name);
  CheckName(text);
  if (!m_failed) Advance(CopyName(Room(text.size() + Names::kTextStep), text));
}

void Writer::PutAttribute(std::string_view name, std::string_view value) {
  constexpr std::string_view kBetween = "=\"";
  constexpr std::size_t kFrame = kBetween.size() + 2;
  const bool isShort =
      name.size() + value.size() < kChunk / kLongestReference - Names::kTextStep - kFrame;
  if (!isShort) {
    Put(" ");
    CheckName(name);
    Put(name);
    Put(kBetween);
    PutText(value, kInAttribute);
    return Put("\"");
  }
  // Files hold them by the hundred thousand: room is made once for the whole.
  char* place = Room(name.size() + Names::kTextStep + kFrame + kLongestReference * value.size());
  *place++ = ' ';
  place = CopyName(place, name);
  place = std::copy(kBetween.begin(), kBetween.end(), place);
  place = PutEscaped(place, value, kInAttribute);
  *place++ = '"';
  Advance(place);
}

void Writer::PutText(std::string_view text, std::uint8_t escaped) {
  constexpr std::size_t kPiece = kChunk / kLongestReference;
  m_failed = m_failed || text.size() > kLongestText;
  while (text.size() > kPiece) {
    // Not inside a character.
    std::size_t size = kPiece;
    while (size > 1 && (text[size] & 0xC0) == 0x80) --size;
    Advance(PutEscaped(Room(kLongestReference * size), text.substr(0, size), escaped));
    text.remove_prefix(size);
  }
  Advance(PutEscaped(Room(kLongestReference * text.size()), text, escaped));
}

char* Writer::PutEscaped(char* place, std::string_view text, std::uint8_t escaped) {
  const auto stops = static_cast<std::uint8_t>(escaped | kForbidden | kSuspect);
  for (; !text.empty(); text.remove_prefix(1)) {
    const char byte = text.front();
    const std::uint8_t found = ClassOf(byte) & stops;
    if (found == 0) [[likely]] {
      *place++ = byte;
    } else if ((found & escaped) != 0) {
      const std::string_view reference = ReferenceFor(byte);
      place = std::copy(reference.begin(), reference.end(), place);
    } else {
      *place++ = byte;
      m_failed = m_failed || found == kForbidden || text.starts_with("\xEF\xBF\xBE") ||
                 text.starts_with("\xEF\xBF\xBF");
    }
  }
  return place;
}

}  // namespace domtree
