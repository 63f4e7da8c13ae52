#include "kit/xml/tree/builder.h"

#include <algorithm>
#include <utility>

#include "kit/text/ascii.h"
#include "kit/xml/raw/raw_tables.h"
#include "kit/xml/text/characters.h"
#include "kit/xml/tokens/declaration.h"
#include "kit/xml/tokens/references.h"
#include "platform/host.h"

namespace zortunedex::kit::markup {
namespace {

// The parser's own limits.
constexpr std::size_t kLongestName = 50000;
constexpr std::size_t kLongestText = 10000000;

/// The name behind "<?".
std::string_view TargetOf(std::string_view instruction) {
  const std::string_view text = instruction.substr(2, instruction.size() - 4);
  return text.substr(0, std::min(text.find_first_of(kBlanks), text.size()));
}

bool IsTarget(std::string_view name) {
  return name.find(':') == std::string_view::npos && IsQualifiedName(name) &&
         !EqualIgnoringCase(name, "xml");
}

template <typename Value>
void Reserve(std::vector<Value>& values, std::size_t count) {
  values.reserve(count);
  host::PreferLargePages(values.data(), values.capacity() * sizeof(Value));
}

}  // namespace

Builder::Builder(Document& document, const CharacterRuns& characters, std::vector<Token>* tokens,
                 Way way)
    : m_document(document),
      m_way(way),
      m_bytes(document.Bytes()),
      m_tokens(tokens),
      m_characters(characters),
      m_tokenizer(m_bytes),
      m_choice(m_bytes,
               way == Way::Xml ? TagChoice::GoodTags::Stay : TagChoice::GoodTags::MayBeRaw),
      m_tree(m_bytes, document.m_elements, document.m_leaves, m_damages),
      m_start(m_bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0) {}

bool Builder::Run() {
  m_damages.Add(m_characters);
  if (IsAtEnd()) return false;
  MakeRoom();
  for (Piece piece; !IsAtEnd() && m_tokenizer.Next(piece);) {
    if (!m_damages.IsFull()) Take(piece);
    if (m_tokens != nullptr) m_tokens->push_back(piece.token);
  }
  if (!IsAtEnd()) Finish();
  return !m_damages.AreBeyondReading();
}

/// Growing would copy over and over what a large file holds. Its beginning tells how much that is.
void Builder::MakeRoom() {
  constexpr std::size_t kSample = 65536;
  const std::string_view sample = m_bytes.substr(0, kSample);
  const auto expected = [&](char mark) {
    const auto found = static_cast<std::size_t>(std::count(sample.begin(), sample.end(), mark));
    return found * (m_bytes.size() / kSample + 1);
  };
  Reserve(m_document.m_attributes, expected('='));
  Reserve(m_document.m_elements, expected('<'));
}

void Builder::Take(Piece& piece) {
  const Span span = piece.token.span;
  const bool isTooDeep = m_beyond > 0;
  switch (piece.token.kind) {
    case TokenKind::Start:
      return isTooDeep ? static_cast<void>(++m_beyond) : TakeTag(piece);
    case TokenKind::End:
      return isTooDeep ? static_cast<void>(--m_beyond) : TakeEnd(piece);
    default:
      break;
  }
  if (isTooDeep) return;
  switch (piece.token.kind) {
    case TokenKind::Empty:
      return TakeTag(piece);
    case TokenKind::Text:
      return TakeText(span);
    case TokenKind::Comment:
      return TakeComment(span);
    case TokenKind::Cdata:
      return TakeCdata(span);
    case TokenKind::Instruction:
      return TakeInstruction(span);
    case TokenKind::Doctype:
      return m_damages.AddRemoval(Reason::Doctype, span);
    default:
      return m_damages.AddRemoval(piece.reason, span);
  }
}

void Builder::TakeText(Span span) {
  const std::string_view text = span.In(m_bytes);
  const bool isByteOrderMark = span.end == m_start;
  const std::size_t brackets = std::exchange(m_brackets, BracketsBehind(text, m_brackets));
  if (IsBlankText(text) || isByteOrderMark) return;
  if (m_tree.Depth() == 0) return m_damages.AddRemoval(Reason::TextOutside, span);
  for (RawMark& mark : FindRawMarks(m_bytes, span, '\0', brackets)) {
    m_damages.Add(mark.reason, mark.span, std::move(mark.mends));
  }
  AddLeaf(TokenKind::Text, span);
}

void Builder::TakeComment(Span span) {
  const Span body(span.begin + std::size_t{4}, span.end - std::size_t{3});
  std::vector<Edit> mends;
  for (std::size_t at = body.begin; at < body.end && mends.size() <= kMostDamages; ++at) {
    // Behind the last one stand the two of the end.
    if (m_bytes[at] == '-' && m_bytes[at + 1] == '-') mends.push_back({{at + 1, at + 1}, " "});
  }
  if (!mends.empty()) m_damages.Add(Reason::BrokenComment, span, std::move(mends));
  if (body.Size() > kLongestText) m_damages.Add(Reason::TooLong, span);
  AddLeaf(TokenKind::Comment, span);
}

void Builder::TakeCdata(Span span) {
  if (m_tree.Depth() == 0) return m_damages.AddRemoval(Reason::BrokenCdata, span);
  if (span.Size() > kLongestText) m_damages.Add(Reason::TooLong, span);
  AddLeaf(TokenKind::Cdata, span);
}

void Builder::TakeInstruction(Span span) {
  const std::string_view text = span.In(m_bytes);
  const std::string_view target = TargetOf(text);
  if (target == "xml" && IsFirst(span)) {
    if (ReadDeclaration(text).isSound) return;
    return m_damages.AddReplacement(Reason::BrokenDeclaration, span,
                                    std::string(kSoundDeclaration));
  }
  if (target == "xml") return m_damages.AddRemoval(Reason::MisplacedDeclaration, span);
  if (!IsTarget(target)) return m_damages.AddRemoval(Reason::BrokenInstruction, span);
  if (target.size() > kLongestName || span.Size() > kLongestText) {
    m_damages.Add(Reason::TooLong, span);
  }
  AddLeaf(TokenKind::Instruction, span);
}

void Builder::AddLeaf(TokenKind kind, Span span) {
  if (kind != TokenKind::Text) m_brackets = 0;
  m_document.m_leaves.push_back({kind, span, m_tree.Current()});
}

void Builder::TakeEnd(const Piece& piece) {
  const Span span = piece.token.span;
  const std::string_view name = m_tokenizer.EndName();
  const std::size_t closed = m_tree.Close(name, span);
  if (closed == 0) return m_damages.AddRemoval(Reason::StrayEndTag, span);
  m_brackets = 0;
  for (std::size_t i = 0; i < closed; ++i) {
    if (m_hasNamespaces.back()) m_namespaces.Leave();
    m_hasNamespaces.pop_back();
  }
  if (piece.isBroken) {
    m_damages.AddReplacement(piece.reason, span, "</" + std::string(name) + ">");
  }
}

void Builder::TakeTag(Piece& piece) {
  const TagChoice::Way way = ChooseReading(piece);
  Tag& tag = m_tokenizer.CurrentTag();
  if (m_tree.Depth() == 0 && m_document.m_elements.empty()) OpenEmptyRoot(piece);
  if (m_tree.Depth() == 0 && JoinSecondRoot(tag)) return;
  if (m_tree.Depth() == kMostLevels) {
    m_damages.Add(Reason::TooDeep, tag.span);
    if (!tag.isEmpty) m_beyond = 1;
    return;
  }
  AddElement(tag, way);
}

TagChoice::Way Builder::ChooseReading(Piece& piece) {
  Tag& tag = m_tokenizer.CurrentTag();
  const TagChoice::Way way = m_choice.Choose(tag, RawTableOf(tag.name.In(m_bytes), m_signal));
  if (way != TagChoice::Way::AsRead && way != TagChoice::Way::Doubtful) {
    piece.token = {tag.isEmpty ? TokenKind::Empty : TokenKind::Start, tag.span};
    m_tokenizer.MoveTo(tag.span.end);
  }
  return way;
}

/// The document element has something in it: where its tag lacks the end, it is a start tag.
void Builder::OpenEmptyRoot(Piece& piece) {
  Tag& tag = m_tokenizer.CurrentTag();
  if (tag.mends.empty() || tag.mends.back().text != "/>") return;
  tag.mends.back().text = ">";
  tag.isEmpty = false;
  piece.token.kind = TokenKind::Start;
}

/// Makes what stands behind the document element a part of it. True when there is nothing left to
/// do for the tag: it is another one of the document element itself.
bool Builder::JoinSecondRoot(const Tag& tag) {
  if (m_document.m_elements.empty()) return false;
  const Element& root = m_document.m_elements[0];
  std::vector<Edit> mends;
  if (root.endTag.IsEmpty()) {
    mends.push_back({{root.tag.end - std::size_t{2}, root.tag.end}, ">"});
  } else {
    mends.push_back({root.endTag, ""});
  }
  const bool isSame = tag.name.In(m_bytes) == root.name.In(m_bytes);
  if (isSame) mends.push_back({tag.span, ""});
  m_damages.Add(Reason::SecondRoot, tag.span, std::move(mends));
  m_tree.ReopenRoot();
  // What ended it is gone, and with it what stood in front of the text to come.
  m_brackets = kCdataBrackets;
  m_hasNamespaces.push_back(false);
  return isSame;
}

void Builder::AddElement(const Tag& tag, TagChoice::Way way) {
  m_brackets = 0;
  Element element;
  element.tag = tag.span;
  element.name = tag.name;
  element.firstAttribute = static_cast<Index>(m_document.m_attributes.size());
  if (way == TagChoice::Way::Doubtful) m_damages.Add(Reason::ReadsTwoWays, tag.span);
  if (way == TagChoice::Way::Ambiguous) m_damages.Add(Reason::Ambiguous, tag.span);
  DropRepeated(m_tokenizer.CurrentTag());
  for (const TagAttribute& attribute : tag.attributes) TakeAttribute(attribute, way);
  element.attributeCount = static_cast<std::uint32_t>(tag.attributes.size());
  const Index added = m_tree.Add(element, tag.isEmpty);
  JudgeTag(m_tokenizer.CurrentTag());
  if (tag.isUnusual) EnterNamespaces(m_document.m_elements[added], tag);
  if (tag.isUnusual && tag.isEmpty) m_namespaces.Leave();
  if (!tag.isEmpty) m_hasNamespaces.push_back(tag.isUnusual);
  if (tag.name.In(m_bytes) == "ChannelSet") {
    const auto type = m_document.ValueOf(m_document.m_elements[added], "inputSignalType");
    const auto number = type ? ParseNumber(*type, INT32_MIN, INT32_MAX) : std::nullopt;
    m_signal = static_cast<InputSignalType>(number.value_or(0));
  }
}

void Builder::TakeAttribute(const TagAttribute& from, TagChoice::Way way) {
  Attribute attribute;
  attribute.name = from.name;
  attribute.value = from.value;
  attribute.end = from.end;
  const bool isPlain = (from.seen & (kMarkupByte | kLineByte)) == 0 && !from.hasQuote;
  const bool hasRuns =
      (from.seen & (kControlByte | kHighByte)) != 0 && m_characters.Touch(from.value);
  if (!isPlain && way != TagChoice::Way::Ambiguous) {
    for (RawMark& mark : FindRawMarks(m_bytes, from.value, from.quote)) {
      const bool isEnd = way == TagChoice::Way::RawEnd;
      m_damages.Add(isEnd ? Reason::RawTagEnd : mark.reason, mark.span, std::move(mark.mends));
    }
  }
  if ((from.seen & kLineByte) != 0) {
    const std::size_t place = m_bytes.find_first_of("\t\r\n", from.value.begin);
    m_damages.Add(Reason::RawBlank, {place, place + 1});
  }
  if (!isPlain || hasRuns) {
    attribute.text = static_cast<Index>(m_document.m_texts.size());
    m_document.m_texts.push_back(hasRuns ? Resolved(m_characters.Replaced(from.value), true)
                                         : Resolved(from.value.In(m_bytes), true));
  }
  m_document.m_attributes.push_back(attribute);
}

/// Takes attributes out that stand in the tag already, with what mends them.
void Builder::DropRepeated(Tag& tag) {
  const std::vector<bool>& isRepeated = m_choice.Repeated();
  if (tag.attributes.size() > kMostAttributes) m_damages.Add(Reason::TooManyAttributes, tag.span);
  if (isRepeated.empty()) return;
  std::vector<TagAttribute> kept;
  for (std::size_t i = 0; i < tag.attributes.size(); ++i) {
    const TagAttribute& attribute = tag.attributes[i];
    if (!isRepeated[i]) {
      kept.push_back(attribute);
      continue;
    }
    const bool hasBlank = Is(m_bytes[attribute.name.begin - std::size_t{1}], kBlankByte);
    const Span whole(attribute.name.begin - std::size_t{hasBlank}, attribute.end);
    std::erase_if(tag.mends, [&attribute](const Edit& mend) {
      const bool closesValue = mend.text.starts_with(attribute.quote);
      return attribute.Whole().Contains(mend.span) &&
             (mend.span.begin < attribute.end || closesValue);
    });
    m_damages.AddRemoval(Reason::RepeatedAttribute, whole);
  }
  tag.attributes = std::move(kept);
}

void Builder::JudgeTag(Tag& tag) {
  if (!tag.mends.empty()) {
    const Span first = tag.mends.front().span;
    m_damages.Add(Reason::BrokenTag, {first.begin, std::max(first.end, tag.span.end)},
                  std::move(tag.mends));
  }
  if (tag.isUnusual && !IsQualifiedName(tag.name.In(m_bytes))) {
    m_damages.Add(Reason::BrokenName, tag.name);
  }
  const bool isTooLong =
      tag.name.Size() > kLongestName ||
      std::any_of(tag.attributes.begin(), tag.attributes.end(), [](const TagAttribute& attribute) {
        return attribute.name.Size() > kLongestName || attribute.value.Size() > kLongestText;
      });
  if (isTooLong) m_damages.Add(Reason::TooLong, tag.span);
}

void Builder::EnterNamespaces(const Element& element, const Tag& tag) {
  m_tree.KeepNesting();
  std::vector<Namespaces::Name> attributes;
  // More are not looked at: they are beyond reading anyway.
  const std::size_t count = std::min<std::size_t>(element.attributeCount, kMostAttributes);
  for (const Attribute& attribute : m_document.AttributesOf(element).first(count)) {
    attributes.push_back({m_document.NameOf(attribute), m_document.ValueOf(attribute)});
  }
  const bool isGood = m_namespaces.Enter(m_document.NameOf(element), attributes);
  if (!isGood) m_damages.Add(Reason::BadNamespace, tag.span);
  if (m_namespaces.CountInForce() > kMostNamespaces) {
    m_damages.Add(Reason::TooManyNamespaces, tag.span);
  }
}

void Builder::Finish() {
  if (!m_damages.IsFull()) m_tree.CloseAll(m_beyond == 0);
  if (m_document.m_elements.empty()) m_damages.Add(Reason::NoElement, {});
  m_damages.Finish(m_document.m_damages, m_document.m_mends);
}

}  // namespace zortunedex::kit::markup
