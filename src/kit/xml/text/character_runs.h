#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kit/xml/text/damage.h"
#include "kit/xml/text/span.h"

namespace zortunedex::kit::markup {

/// The characters of a file that XML cannot have, whatever they stand in: bytes that are no UTF-8,
/// and characters that XML lacks. Bytes that are no UTF-8 are taken by the word, since bytes of
/// ASCII may belong to a character of theirs; a word ends at a blank and at markup.
class CharacterRuns {
 public:
  /// Text of such a word; nothing when it cannot be told.
  using Decode = std::function<std::optional<std::string>(std::string_view)>;

  struct Run {
    Span span;
    Reason reason = Reason::NotUtf8;
    bool isMended = false;
    std::string text;  ///< what reads in its place
  };

  /// The bytes have to stay. Ends at one run more than kMostDamages.
  CharacterRuns(std::string_view bytes, const Decode& decode);

  const std::vector<Run>& All() const { return m_runs; }
  /// A run begins in the span.
  bool Touch(Span span) const;
  /// The bytes of a span with its runs replaced.
  std::string Replaced(Span span) const;

 private:
  void TakeForbidden(std::size_t& at);
  void TakeWord(std::size_t& at, const Decode& decode);
  std::vector<Run>::const_iterator FirstIn(Span span) const;

  std::string_view m_bytes;
  std::vector<Run> m_runs;
};

}  // namespace zortunedex::kit::markup
