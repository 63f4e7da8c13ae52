#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "kit/xml/text/edits.h"
#include "kit/xml/text/forward_search.h"
#include "kit/xml/text/span.h"

namespace zortunedex::kit::markup {

struct TagAttribute {
  Span name;
  Span value;
  std::uint32_t end = 0;  ///< behind the closing quotation mark
  char quote = '"';       ///< around the value, once mended
  std::uint8_t seen = 0;  ///< classes of the value's bytes
  bool hasQuote = false;  ///< the value holds its own quotation mark

  Span Whole() const { return {name.begin, end}; }
};

/// A start tag or an empty one.
struct Tag {
  Span span;
  Span name;
  bool isEmpty = false;
  bool isGuessed = false;  ///< not as XML wants it: read as far as that can be told
  bool isBroken = false;   ///< also when what stands in the values is mended
  bool isCut = false;      ///< the file ends in it
  bool isUnusual = false;  ///< a name in it has a colon or no ASCII, or declares a namespace
  std::vector<TagAttribute> attributes;
  /// What makes it one as XML wants it, but for what stands in the values.
  std::vector<Edit> mends;
};

/// Reads tags. Places must not go back, but for the same tag.
class TagReader {
 public:
  explicit TagReader(std::string_view bytes);

  /// Reads the tag whose "<" stands there in front of a name. One that is broken ends at the latest
  /// at a line's end behind which a "<" begins the next line.
  void Read(std::size_t begin, Tag& tag);

  /// The same place, as far as a tag that begins there may reach.
  std::size_t LimitOf(std::size_t begin);

  /// Notes what stands in a value.
  static void LookAtValue(std::string_view bytes, TagAttribute& attribute);

 private:
  bool ReadSound(Tag& tag);
  bool TakeSoundAttribute(std::size_t& at, Tag& tag);
  void ReadBroken(Tag& tag);
  std::size_t TakeAttribute(std::size_t at, Tag& tag);
  std::size_t TakeQuoted(std::size_t at, TagAttribute& attribute, Tag& tag);
  std::size_t TakeUnquoted(std::size_t behindEquals, std::size_t at, TagAttribute& attribute,
                           Tag& tag);
  std::size_t TakeJunk(std::size_t at, Tag& tag) const;
  void EndWithoutMark(std::size_t at, Tag& tag) const;
  std::size_t ClosingQuote(char quote, std::size_t from);
  bool ClosesValue(std::size_t quote) const;
  bool EndsTag(std::size_t at) const;
  std::size_t NameEnd(std::size_t at) const;
  std::size_t TrimmedEnd(std::size_t begin, std::size_t end) const;
  char At(std::size_t place) const { return place < m_bytes.size() ? m_bytes[place] : '\0'; }

  /// The next quotation mark that seems to close a value.
  struct Closing {
    ForwardSearch any;
    std::size_t from = 0;
    std::size_t found = 0;
    bool isKnown = false;
  };
  Closing& ClosingOf(char quote) { return quote == '"' ? m_double : m_single; }

  std::string_view m_bytes;
  Closing m_double;
  Closing m_single;
  ForwardSearch m_tagEnds;
  std::size_t m_limitFrom = 0;
  std::size_t m_limit = 0;  ///< of every tag that begins behind m_limitFrom and in front of it
};

}  // namespace zortunedex::kit::markup
