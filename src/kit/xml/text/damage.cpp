#include "kit/xml/text/damage.h"

#include <cstddef>

namespace zortunedex::kit::markup {
namespace {

struct Words {
  Reason reason;
  const char* code;
  const char* text;
};

constexpr Words kWords[] = {
    {Reason::NotUtf8, "ZT007", "bytes that are no UTF-8"},
    {Reason::OtherEncoding, "ZT008", "an encoding that is not looked into"},
    {Reason::RawAmpersand, "ZT020", "a raw &"},
    {Reason::RawLess, "ZT020", "a raw <"},
    {Reason::RawQuote, "ZT020", "a raw quotation mark in a value"},
    {Reason::RawCdataEnd, "ZT020", "a raw ]]> in a text"},
    {Reason::RawTagEnd, "ZT020", "a raw end of the tag in a value"},
    {Reason::Truncated, "ZT021", "the file ends in the middle of a tag"},
    {Reason::BrokenDeclaration, "ZT021", "the XML declaration is not as it has to be"},
    {Reason::MisplacedDeclaration, "ZT021", "an XML declaration that does not stand first"},
    {Reason::BrokenInstruction, "ZT021", "a processing instruction without its name or its end"},
    {Reason::BrokenComment, "ZT021", "a comment without its end, or with -- in it"},
    {Reason::BrokenCdata, "ZT021", "a CDATA section without its end, or outside of the elements"},
    {Reason::BrokenMarkup, "ZT021", "<! that begins nothing"},
    {Reason::BrokenTag, "ZT021", "a tag that is not as it has to be"},
    {Reason::BrokenEndTag, "ZT021", "an end tag that is not as it has to be"},
    {Reason::BrokenName, "ZT021", "a name that nothing may have"},
    {Reason::NotClosed, "ZT021", "an element that is not closed"},
    {Reason::StrayEndTag, "ZT021", "an end tag without an element"},
    {Reason::TextOutside, "ZT021", "text outside of the document element"},
    {Reason::SecondRoot, "ZT021", "an element behind the end of the document element"},
    {Reason::NoElement, "ZT021", "no element at all"},
    {Reason::BadNamespace, "ZT021", "a namespace that is not declared, or not properly"},
    {Reason::ForbiddenCharacter, "ZT022", "a character that XML does not have"},
    {Reason::Doctype, "ZT023", "a document type declaration"},
    {Reason::TooDeep, "ZT023", "more than 256 levels of elements"},
    {Reason::TooManyAttributes, "ZT023", "more than 1,024 attributes in an element"},
    {Reason::TooManyNamespaces, "ZT023", "more than 256 namespaces in force at once"},
    {Reason::TooLong, "ZT023", "a name, a value or a file beyond what can be read"},
    {Reason::TooManyDamages, "ZT023", "more than a million damages"},
    {Reason::RepeatedAttribute, "ZT024", "an attribute twice in a tag"},
    {Reason::Ambiguous, "ZT025", "raw markup that splits in more than one way"},
    {Reason::ReadsTwoWays, "ZT025", "markup that may be a part of the value before it"},
    {Reason::RawBlank, "ZT026", "a raw tab or line break in a value"},
};

constexpr std::size_t kReasons = static_cast<std::size_t>(Reason::RawBlank) + 1;
static_assert(sizeof(kWords) / sizeof(kWords[0]) == kReasons);
static_assert([] {
  for (std::size_t i = 0; i < kReasons; ++i) {
    if (kWords[i].reason != static_cast<Reason>(i)) return false;
  }
  return true;
}());

const Words& WordsOf(Reason reason) { return kWords[static_cast<std::size_t>(reason)]; }

}  // namespace

const char* CodeOf(Reason reason) { return WordsOf(reason).code; }

const char* TextOf(Reason reason) { return WordsOf(reason).text; }

bool IsBeyondReading(Reason reason) {
  return reason != Reason::OtherEncoding && reason != Reason::ReadsTwoWays &&
         reason != Reason::RawBlank;
}

}  // namespace zortunedex::kit::markup
