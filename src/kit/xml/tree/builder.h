#pragma once

#include <string_view>
#include <vector>

#include "core/interfaces.h"
#include "kit/xml/raw/tag_choice.h"
#include "kit/xml/text/character_runs.h"
#include "kit/xml/tokens/tokenizer.h"
#include "kit/xml/tree/damage_list.h"
#include "kit/xml/tree/document.h"
#include "kit/xml/tree/element_tree.h"
#include "kit/xml/tree/namespaces.h"

namespace zortunedex::kit::markup {

/// Reads the bytes of a document into its tree.
class Builder {
 public:
  enum class Way {
    Xml,      ///< as a parser does: ends at the first damage that a parser ends at
    Mending,  ///< all of it; raw markup of the pre-formatted form is read as such
  };

  /// All stay with the caller; `tokens` may be null.
  Builder(Document& document, const CharacterRuns& characters, std::vector<Token>* tokens, Way way);

  /// False where a parser does not take the file; with Way::Xml the document is of no use then.
  bool Run();

 private:
  void MakeRoom();
  void Take(Piece& piece);
  void TakeText(Span span);
  void TakeComment(Span span);
  void TakeCdata(Span span);
  void TakeInstruction(Span span);
  void TakeEnd(const Piece& piece);
  void TakeTag(Piece& piece);
  TagChoice::Way ChooseReading(Piece& piece);
  void OpenEmptyRoot(Piece& piece);
  bool JoinSecondRoot(const Tag& tag);
  void AddElement(const Tag& tag, TagChoice::Way way);
  void TakeAttribute(const TagAttribute& from, TagChoice::Way way);
  void DropRepeated(Tag& tag);
  void JudgeTag(Tag& tag);
  void EnterNamespaces(const Element& element, const Tag& tag);
  void AddLeaf(TokenKind kind, Span span);
  void Finish();
  bool IsFirst(Span span) const { return span.begin == m_start; }
  bool IsAtEnd() const { return m_way == Way::Xml && m_damages.AreBeyondReading(); }

  Document& m_document;
  Way m_way;
  std::string_view m_bytes;
  std::vector<Token>* m_tokens;
  const CharacterRuns& m_characters;
  Tokenizer m_tokenizer;
  TagChoice m_choice;
  DamageList m_damages;
  ElementTree m_tree;
  Namespaces m_namespaces;
  std::vector<bool> m_hasNamespaces;              ///< of every open element
  InputSignalType m_signal = InputSignalUnknown;  ///< of the channel set
  std::size_t m_start = 0;                        ///< behind the byte order mark
  std::size_t m_beyond = 0;                       ///< levels that are too deep
  /// That end the text in front, of which the next one becomes a part where all that stands between
  /// is removed.
  std::size_t m_brackets = 0;
};

}  // namespace zortunedex::kit::markup
