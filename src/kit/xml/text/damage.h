// What is wrong with the bytes of a file, before anybody asks what they mean.
#pragma once

#include <cstdint>

#include "kit/xml/text/span.h"

namespace zortunedex::kit::markup {

/// The order is that of the codes.
enum class Reason : std::uint8_t {
  NotUtf8,               ///< ZT007 bytes that are no UTF-8; they are mended by the code page
  OtherEncoding,         ///< ZT008 UTF-16, or a name in the declaration that is not UTF-8
  RawAmpersand,          ///< ZT020 & that begins no reference, in a value or a text
  RawLess,               ///< ZT020 < in a value or a text
  RawQuote,              ///< ZT020 the value's own quotation mark in it
  RawCdataEnd,           ///< ZT020 ]]> in a text
  RawTagEnd,             ///< ZT020 a value that seems to end its tag: the rest of it reads as text
  Truncated,             ///< ZT021 the file ends inside of a tag, a comment or the like
  BrokenDeclaration,     ///< ZT021 <?xml …?> is not as it has to be
  MisplacedDeclaration,  ///< ZT021 <?xml …?> that does not stand in front of everything
  BrokenInstruction,     ///< ZT021 <? without a proper name, or without its end
  BrokenComment,         ///< ZT021 <!-- without its end, or with -- in it
  BrokenCdata,           ///< ZT021 <![CDATA[ without its end, or outside of the document element
  BrokenMarkup,          ///< ZT021 <! that begins nothing that there is
  BrokenTag,             ///< ZT021 a start tag with something in it that is no attribute, or no end
  BrokenEndTag,          ///< ZT021 an end tag with more than its name, or without its end
  BrokenName,            ///< ZT021 an element or an attribute is called what nothing may be called
  NotClosed,             ///< ZT021 an element without its end tag
  StrayEndTag,           ///< ZT021 an end tag without its element
  TextOutside,           ///< ZT021 text in front of the document element or behind it
  SecondRoot,            ///< ZT021 an element behind the end of the document element
  NoElement,             ///< ZT021 there is none at all
  BadNamespace,          ///< ZT021 a prefix that nothing declares, or a declaration that is none
  ForbiddenCharacter,    ///< ZT022 a character that XML does not have
  Doctype,               ///< ZT023 a document type declaration
  TooDeep,               ///< ZT023 more than kMostLevels levels
  TooManyAttributes,     ///< ZT023 more than kMostAttributes attributes in an element
  TooManyNamespaces,     ///< ZT023 more than kMostNamespaces declarations in force at once
  TooLong,               ///< ZT023 a name, a value, or a file beyond what a parser takes
  TooManyDamages,        ///< ZT023 more than kMostDamages, or edits: the rest is not listed
  RepeatedAttribute,     ///< ZT024 an attribute twice in a tag: the first counts
  Ambiguous,             ///< ZT025 raw markup that splits in more than one way
  ReadsTwoWays,          ///< ZT025 good XML, and raw markup with other values just as well
  RawBlank,              ///< ZT026 a tab or a line break in a value, which reads as a blank
};

inline constexpr std::uint32_t kMostLevels = 256;
inline constexpr std::uint32_t kMostAttributes = 1024;
inline constexpr std::uint32_t kMostNamespaces = 256;
inline constexpr std::uint32_t kMostDamages = 1000000;

/// "ZT020".
const char* CodeOf(Reason reason);
/// "a raw & in a value", for a message.
const char* TextOf(Reason reason);
/// False for what leaves a document well-formed.
bool IsBeyondReading(Reason reason);

struct Damage {
  Reason reason = Reason::NotUtf8;
  bool isMended = false;  ///< by the edits of Document::MendsOf, or by those of what surrounds it
  Span span;
  /// Of its edits, in the document's own order.
  std::uint32_t firstMend = 0;
  std::uint32_t mendCount = 0;
};

}  // namespace zortunedex::kit::markup
