// A file read without losing a byte: whatever the bytes are, there is a tree of what a reader would
// see once the damages that can be mended are mended, and every part of it knows where it stands.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kit/xml/text/damage.h"
#include "kit/xml/text/edits.h"
#include "kit/xml/text/places.h"
#include "kit/xml/text/span.h"
#include "kit/xml/tokens/tokens.h"

namespace zortunedex::kit::markup {

/// Place of an element or an attribute in the document's lists.
using Index = std::uint32_t;
inline constexpr Index kNone = 0xFFFFFFFF;

struct Attribute {
  Span name;
  Span value;             ///< between the quotation marks, as it stands in the file
  std::uint32_t end = 0;  ///< behind the closing quotation mark
  Index text = kNone;     ///< the document's own: where the value is not what stands in the file

  /// With its name and quotation marks.
  Span Whole() const { return {name.begin, end}; }
};

struct Element {
  Span tag;  ///< the start tag, or the whole of an empty one
  Span name;
  Span endTag;  ///< empty, at the place where it would stand, for an empty tag and where it is
                ///< missing
  Index parent = kNone;
  Index firstChild = kNone;
  Index next = kNone;  ///< sibling
  Index firstAttribute = 0;
  std::uint32_t attributeCount = 0;

  /// From its tag to its end tag.
  Span Whole() const { return {tag.begin, endTag.end}; }
};

/// A comment, CDATA, an instruction, or text that is not white space alone.
struct Leaf {
  TokenKind kind = TokenKind::Text;
  Span span;
  Index parent = kNone;  ///< none outside of the document element
};

struct ReadOptions {
  /// Text (UTF-8) of bytes that are none, by the code page that the caller takes them for; nothing
  /// when they are no text there either. Without it such bytes are left.
  std::function<std::optional<std::string>(std::string_view)> decode;
  /// Receives the tokens as they were read in the end.
  std::vector<Token>* tokens = nullptr;
};

class Document {
 public:
  /// Reads any bytes, in time proportional to their number.
  static Document Read(std::string bytes, const ReadOptions& options = {});

  std::string_view Bytes() const { return m_bytes; }
  std::string_view Text(Span span) const { return span.In(m_bytes); }

  /// Kept in the order of the file; the first one is the document element. Empty when the file is
  /// in another encoding, which is then its only damage.
  std::span<const Element> Elements() const { return m_elements; }
  std::string_view NameOf(const Element& element) const { return Text(element.name); }
  std::span<const Attribute> AttributesOf(const Element& element) const {
    return std::span(m_attributes).subspan(element.firstAttribute, element.attributeCount);
  }
  /// Null when there is none.
  const Attribute* Find(const Element& element, std::string_view attribute) const;
  std::string_view NameOf(const Attribute& attribute) const { return Text(attribute.name); }
  /// What a reader gets once the mends are made: UTF-8, references resolved, tabs and line breaks
  /// as blanks.
  std::string_view ValueOf(const Attribute& attribute) const {
    return attribute.text == kNone ? Text(attribute.value) : m_texts[attribute.text];
  }
  /// Same for an attribute that may be missing.
  std::optional<std::string_view> ValueOf(const Element& element, std::string_view attribute) const;

  std::span<const Leaf> Leaves() const { return m_leaves; }

  /// By their place in the file.
  std::span<const Damage> Damages() const { return m_damages; }
  /// What mends a damage. No two damages' edits touch each other.
  std::span<const Edit> MendsOf(const Damage& damage) const;
  /// Of all damages that are mended. To apply those of some damages alone, add them in the order of
  /// Damage::firstMend: several may be inserted at one place.
  Edits Mends() const;
  /// Name of the encoding for Reason::OtherEncoding.
  const std::string& EncodingName() const { return m_encoding; }

  /// A parser takes it for well-formed, and sees this tree.
  bool IsReadable() const { return m_isReadable; }

  /// Line and column of a byte. The first question counts the lines; not for several threads.
  Place PlaceOf(std::size_t offset) const;

 private:
  friend class Builder;

  explicit Document(std::shared_ptr<const std::string> bytes)
      : m_held(std::move(bytes)), m_bytes(*m_held) {}

  void TakeEncoding(std::vector<Token>* tokens);
  std::vector<bool> Doubts() const;
  void AddDoubtsOnceMended();

  /// Where they stand is where they stay, also when the document moves.
  std::shared_ptr<const std::string> m_held;
  std::string_view m_bytes;
  std::string m_encoding;
  bool m_isReadable = false;
  std::vector<Element> m_elements;
  std::vector<Attribute> m_attributes;
  std::deque<std::string> m_texts;
  std::vector<Leaf> m_leaves;
  std::vector<Damage> m_damages;
  std::vector<Edit> m_mends;
  mutable std::unique_ptr<Places> m_places;
};

}  // namespace zortunedex::kit::markup
