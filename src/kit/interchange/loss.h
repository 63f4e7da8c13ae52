// What does not come through where a list leaves or enters.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kit/model/field_value.h"

namespace zortunedex::kit::interchange {

/// A code never changes its meaning.
enum class Code : std::uint16_t {
  NoPlace = 101,
  StreamsDropped = 102,
  StreamKindDropped = 103,
  MarkDropped = 104,
  WordLacking = 110,
  SecondGenerationDropped = 111,
  CaIdsBecameFlag = 112,
  StreamUnknown = 120,
  NameChanged = 201,
  NumberRounded = 202,
  CaFlagCleared = 203,
  ProviderTaken = 204,
  SystemAssumed = 310,
  LanguageAssumed = 311,
  TypeAssumed = 312,
  PositionUnknown = 313,
  TuningDerived = 314,
  SignalNotOfTarget = 401,
  SignalNotOfList = 402,
  IdentityTwice = 403,
  NoIdentity = 404,
  LineNotUnderstood = 501,
  KeyUnknown = 502,
  ValueOutOfRange = 503,
};

/// A code and what it means.
struct CodeMeaning {
  Code code;
  const char* text;
};

/// All codes, in ascending order.
std::span<const CodeMeaning> Codes();
/// "L101".
std::string CodeName(Code code);
/// A few words.
const char* MeaningOf(Code code);

/// Where something was lost. What is not known is left at its default.
struct Place {
  std::optional<UINT> index;  ///< of the channel in the list
  std::string name;           ///< of the channel, UTF-8
  std::size_t line = 0;       ///< of the file, counted from 1
};

/// One value that did not come through as it was.
struct Loss {
  Code code = Code::NoPlace;
  std::string field;  ///< as the channel file names it, else as the other file does
  Place place;
  FieldValue value;   ///< what it was
  FieldValue became;  ///< nothing: it is gone
};

/// Collects what was lost, in the order in which it was noticed.
class Losses {
 public:
  /// Keeps all.
  Losses() = default;
  /// Keeps so many; of the others it is counted how many there were.
  explicit Losses(std::size_t most) : m_most(most) {}

  /// Adds one.
  void Add(Code code, std::string_view field, const Place& place, FieldValue value = {},
           FieldValue became = {});
  /// Adds those of another collection behind its own.
  void Take(Losses&& more);

  /// Those that are kept.
  const std::vector<Loss>& All() const { return m_all; }
  bool Empty() const { return m_all.empty(); }
  bool Has(Code code) const;
  /// How many there were that are not kept.
  const std::map<Code, std::size_t>& Beyond() const { return m_beyond; }

 private:
  std::vector<Loss> m_all;
  std::map<Code, std::size_t> m_beyond;
  std::size_t m_most = SIZE_MAX;
};

}  // namespace zortunedex::kit::interchange
