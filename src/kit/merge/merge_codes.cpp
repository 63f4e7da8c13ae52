#include "kit/merge/merge.h"

namespace zortunedex::kit::merge {
namespace {

constexpr CodeMeaning kCodes[] = {
    {Code::Unchanged, "unchanged"},
    {Code::TuningChanged, "tuning changed"},
    {Code::Moved, "moved to another transponder"},
    {Code::Renamed, "renamed by the broadcaster"},
    {Code::Renumbered, "renumbered service"},
    {Code::StreamsChanged, "streams or other values changed"},
    {Code::New, "new"},
    {Code::NewLeftOut, "new, not added"},
    {Code::TwiceInScan, "twice in the scan"},
    {Code::DeletedByUser, "deleted by the user: stays out"},
    {Code::NotFound, "not found this time"},
    {Code::Marked, "not found, marked"},
    {Code::Removed, "not found, removed"},
    {Code::CannotMark, "not found, cannot be marked"},
    {Code::FoundAgain, "found again"},
    {Code::Ambiguous, "ambiguous: left alone"},
    {Code::RenamedByBoth, "renamed by both: the list's name stays"},
    {Code::NameUnclear, "whose name it is, is not known: both stay"},
    {Code::TuningEdited, "tuning edited by the user"},
};

}  // namespace

std::span<const CodeMeaning> Codes() { return kCodes; }

std::string CodeName(Code code) { return "M" + std::to_string(static_cast<std::uint16_t>(code)); }

const char* MeaningOf(Code code) {
  for (const CodeMeaning& known : kCodes) {
    if (known.code == code) return known.text;
  }
  return "";
}

}  // namespace zortunedex::kit::merge
