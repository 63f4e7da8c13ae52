#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "kit/xml/raw/raw_markup.h"
#include "kit/xml/tokens/tag_reader.h"

namespace zortunedex::kit::markup {

/// By its first line. Also when only the declaration in it is broken, which then becomes the right
/// one.
bool IsPreFormatted(std::string_view bytes);

/// Decides what a tag is: as XML has it, or an element of the pre-formatted form.
class TagChoice {
 public:
  enum class Way {
    AsRead,     ///< as the tag was read
    Raw,        ///< raw markup: the tag was read again
    RawEnd,     ///< the same, though as XML it is good up to where a value seems to end the tag
    Ambiguous,  ///< raw markup that splits in more than one way: the tag is the first of these
    Doubtful,   ///< as the tag was read, but it is raw markup just as well
  };

  /// What is done with a tag that XML takes: it may begin a value that seems to end it.
  enum class GoodTags { Stay, MayBeRaw };

  TagChoice(std::string_view bytes, GoodTags goodTags);

  /// `table` may be empty.
  Way Choose(Tag& tag, RawTable table);

  /// For every attribute of the chosen tag whether one of that name stands in front of it; empty
  /// when there is none.
  const std::vector<bool>& Repeated() const { return m_repeated; }

 private:
  bool FollowsTable(const Tag& tag, RawTable table) const;
  bool BeginsLine(std::size_t place) const;
  std::size_t EndOfRow(const Tag& tag, RawTable table) const;
  bool EndsLine(std::size_t place) const;
  bool IsLineOfElement(std::size_t begin) const;
  bool BeginsElement(std::size_t begin) const;
  std::size_t Search(const Tag& tag, RawTable table, bool endsAtElements);
  void TakeRaw(Tag& tag, std::size_t end, RawTable table) const;
  void FindRepeated(const Tag& tag);

  std::string_view m_bytes;
  bool m_isPreFormatted;
  GoodTags m_goodTags;
  RawSplit m_split;
  std::vector<bool> m_repeated;
  std::vector<std::size_t> m_order;
};

}  // namespace zortunedex::kit::markup
