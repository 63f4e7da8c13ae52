// A scan into a list, so that what is the user's stays: order, favourites, locks, names of his own.
// Everything here is a function of its arguments: nothing is read or written.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kit/merge/merge_base.h"
#include "kit/model/channel_table.h"
#include "kit/model/field_value.h"

namespace zortunedex::kit::merge {

/// What becomes of a channel or of a scanned service. A code never changes its meaning.
enum class Code : std::uint16_t {
  Unchanged = 100,
  TuningChanged = 101,
  Moved = 102,       ///< to another transponder
  Renamed = 103,     ///< by the broadcaster
  Renumbered = 104,  ///< another service number or programme number
  StreamsChanged = 105,
  New = 201,
  NewLeftOut = 202,     ///< new ones are not wanted
  TwiceInScan = 203,    ///< told once; a second scan with the same pair says nothing of it
  DeletedByUser = 204,  ///< stays out
  NotFound = 301,
  Marked = 302,      ///< not found, its running status says so
  Removed = 303,     ///< not found
  CannotMark = 304,  ///< not found, the type has no running status; told once, then NotFound
  FoundAgain = 305,
  Ambiguous = 401,  ///< several services fit: left alone
  RenamedByBoth = 402,
  NameUnclear = 403,  ///< whose name it is, the user's or the broadcaster's, is not known
  TuningEdited = 404,
};

/// A code and what it means.
struct CodeMeaning {
  Code code;
  const char* text;
};

/// All codes, in ascending order.
std::span<const CodeMeaning> Codes();
/// "M102".
std::string CodeName(Code code);
/// A few words.
const char* MeaningOf(Code code);

/// Where services come to stand that the list lacks.
enum class NewOnes {
  End,          ///< behind the last channel, by frequency, polarisation and service
  Transponder,  ///< behind the last channel of their transponder, else at the end
  None,         ///< left out
};
/// What becomes of channels that are gone.
enum class Gone { Keep, Mark, Remove };
/// Where a channel that the scan lacks counts as gone.
enum class Scope { Transponders, Full, None };
/// Whose channel numbers stay.
enum class Numbers {
  ByType,  ///< the list's for DVB-S, the scan's for all others
  Keep,
  Scan,
};
/// Whose tuning stays where the user changed it, too.
enum class EditedTuning { Scan, Keep };
/// What becomes of services that the user took out of the list.
enum class Deleted { StayOut, Add };

/// The rules of a merge; docs/merge.md tells what each of them does.
struct MergePolicy {
  NewOnes newOnes = NewOnes::End;
  Scope scope = Scope::Transponders;
  Gone gone = Gone::Keep;
  std::uint32_t goneAfter = 1;  ///< Remove: absent that many times in a row
  bool goneFavorites = false;   ///< Remove: favourites and locked channels, too
  Numbers numbers = Numbers::ByType;
  EditedTuning tuning = EditedTuning::Scan;
  Deleted deleted = Deleted::StayOut;
  bool looseNames = false;  ///< names compare without case, blanks and a final "HD"

  /// How the channels of the list, and those of the base's entries, read in the scan's format, in
  /// their order: what the format leaves out or rounds stays what it is. Empty: it holds
  /// everything.
  std::vector<Channel> toldList = {};
  std::vector<Channel> toldBase = {};
  /// UTF-8 of the narrow texts in station blocks, for the plan alone; empty: they are UTF-8.
  std::function<std::string(std::string_view narrow)> utf8 = {};
};

/// One value that differs in the list, the base, the scan or the result. Nothing where that has no
/// such channel or entry.
struct FieldChange {
  std::string field;  ///< as the channel file names it: "freq", "AudioStream[2].pid"
  FieldValue list;
  FieldValue base;
  FieldValue scan;
  FieldValue result;
};

/// A service that an ambiguous channel may be.
struct Candidate {
  std::string identity;
  std::string name;
};

/// What becomes of one channel or service.
struct Change {
  Code code = Code::Unchanged;
  UINT index = 0;        ///< in the list as it was; 0: the list has it not
  UINT resultIndex = 0;  ///< in the list as it is to be; 0: that has it not
  std::string identity;  ///< "S19.2E-1-1011-11110"; of what the result has, else the list, the scan
  std::string name;      ///< UTF-8, as it is shown
  bool isFavorite = false;
  bool isLocked = false;
  std::uint32_t absent = 0;  ///< how many scans in a row lacked it
  /// What the result has otherwise than the list, in the file's order; of the codes of conflicts
  /// also the values that are at odds. Empty for what is unchanged, new or left out.
  std::vector<FieldChange> fields;
  std::vector<Candidate> candidates;  ///< of Ambiguous

  /// Places in the tables that were compared.
  std::optional<std::size_t> inList;
  std::vector<std::size_t> inScan;  ///< several: one service that the scan has more than once
};

/// Everything that a merge would do.
struct MergePlan {
  DWORD country = 0;
  InputSignalType signal = InputSignalUnknown;
  /// Channels of the list in their order; then what the list has not, new ones first, in the order
  /// in which they are added.
  std::vector<Change> changes;
  ChannelTable result;
  MergeBase base;            ///< what the next merge is to be given
  bool changesList = false;  ///< the result is not the list
};

/// What a merge would do. Raises a Failure for tables of different countries or signal types, a
/// type that the file cannot hold, and a scan without channels where the scope is not Full.
/// O(n log n) in the number of channels.
MergePlan PlanMerge(const ChannelTable& list, const MergeBase* base, const ChannelTable& scan,
                    const MergePolicy& policy);

/// The list as it is to be. Channels that are removed or placed before others number the list 1, 2,
/// 3 …; otherwise every channel keeps its index.
ChannelTable Apply(const MergePlan& plan);

}  // namespace zortunedex::kit::merge
