#pragma once

#include <string>
#include <vector>

#include "kit/xml/text/character_runs.h"
#include "kit/xml/text/damage.h"
#include "kit/xml/text/edits.h"

namespace zortunedex::kit::markup {

/// Collects damages in the order in which they are found, and puts them in that of the file.
class DamageList {
 public:
  /// One that is left.
  void Add(Reason reason, Span span);
  /// One that is mended.
  void Add(Reason reason, Span span, std::vector<Edit> mends);
  void AddReplacement(Reason reason, Span span, std::string text) {
    Add(reason, span, {{span, std::move(text)}});
  }
  void AddRemoval(Reason reason, Span span) { AddReplacement(reason, span, {}); }
  /// Nothing more is taken.
  bool IsFull() const { return m_isFull; }
  /// One of them keeps a parser from taking the file.
  bool AreBeyondReading() const { return m_areBeyondReading; }
  void Add(const CharacterRuns& characters);

  /// Leaves to what is removed or replaced as a whole what stands in it, and sorts the damages.
  void Finish(std::vector<Damage>& damages, std::vector<Edit>& mends);

 private:
  void Put(Damage damage, std::vector<Edit> mends);
  std::vector<Span> DropInnerMends();
  std::vector<bool> ChooseMends(std::vector<Span>& outer) const;
  void MendInner(const std::vector<Span>& outer);

  std::vector<Damage> m_damages;
  std::vector<Edit> m_mends;
  bool m_isFull = false;
  bool m_areBeyondReading = false;
};

}  // namespace zortunedex::kit::markup
