#include "kit/check/findings/codes.h"

#include <algorithm>
#include <iterator>

namespace zortunedex::kit::check {
namespace {

constexpr auto kError = Severity::Error;
constexpr auto kWarning = Severity::Warning;
constexpr auto kNote = Severity::Note;
constexpr auto kYes = Repair::Yes;
constexpr auto kOption = Repair::Option;
constexpr auto kNo = Repair::No;
constexpr auto kNoOption = Option::None;

constexpr Code kCodes[] = {
    {"ZT001", kError, kYes, kNoOption, "the file is not well-formed"},
    {"ZT002", kError, kOption, Option::Restore,
     "a file put aside holds channels that the file lacks"},
    {"ZT003", kNote, kYes, kNoOption, "a file put aside adds nothing"},
    {"ZT004", kWarning, kYes, kNoOption, "a file left over from a save"},
    {"ZT005", kNote, kNo, kNoOption, "a file is missing that channels need"},
    {"ZT006", kWarning, kYes, kNoOption, "a file of no bytes"},
    {"ZT007", kError, kYes, kNoOption, "bytes that are not UTF-8"},
    {"ZT008", kNote, kOption, Option::ToUtf8, "an encoding that is not looked into"},
    {"ZT009", kWarning, kYes, kNoOption,
     "a name in other letters, a link, or a file that is write-protected"},
    {"ZT020", kError, kYes, kNoOption, "raw markup in a value"},
    {"ZT021", kError, kYes, kNoOption, "broken markup"},
    {"ZT022", kError, kYes, kNoOption, "a character that XML does not have"},
    {"ZT023", kError, kYes, kNoOption, "a document type, or more than a parser takes"},
    {"ZT024", kError, kYes, kNoOption, "an attribute twice in a tag"},
    {"ZT025", kError, kOption, Option::DropUnrepairable, "raw markup that splits in several ways"},
    {"ZT026", kWarning, kNo, kNoOption, "a raw tab or line break in a value"},
    {"ZT031", kNote, kNo, kNoOption, "what the library does not know"},
    {"ZT032", kWarning, kNo, kNoOption, "an unknown element inside of ElementStreams"},
    {"ZT040", kError, kNo, kNoOption, "the document element is no CHANNELTABLE"},
    {"ZT041", kError, kYes, kNoOption, "a country twice"},
    {"ZT042", kError, kYes, kNoOption, "a key in another spelling"},
    {"ZT043", kError, kYes, kNoOption, "a channel set twice"},
    {"ZT044", kWarning, kYes, kNoOption, "countries or channel sets out of order"},
    {"ZT046", kWarning, kYes, kNoOption, "empty channels of a signal that the file cannot hold"},
    {"ZT047", kWarning, kNo, kNoOption, "an unknown signal or country"},
    {"ZT060", kError, kYes, kNoOption, "an index twice"},
    {"ZT061", kWarning, kYes, kNoOption, "no usable index"},
    {"ZT062", kWarning, kOption, Option::Renumber, "indexes with gaps or out of order"},
    {"ZT070", kWarning, kOption, Option::DropDuplicates, "a service twice"},
    {"ZT080", kWarning, kYes, kNoOption, "a count above the streams"},
    {"ZT081", kError, kYes, kNoOption, "a count below the streams"},
    {"ZT082", kError, kNo, kNoOption, "more streams than a station can hold"},
    {"ZT083", kWarning, kYes, kNoOption, "a selected stream that is not there"},
    {"ZT084", kWarning, kNo, kNoOption, "a PID above 8191"},
    {"ZT085", kNote, kNo, kNoOption, "a PID of tables, or twice"},
    {"ZT086", kWarning, kYes, kNoOption, "a language of more than twelve bits"},
    {"ZT087", kWarning, kNo, kNoOption, "a component without a place of its own"},
    {"ZT100", kWarning, kYes, kNoOption, "a number with other text"},
    {"ZT101", kWarning, kNo, kNoOption, "a number beyond its field"},
    {"ZT103", kWarning, kNo, kNoOption, "a text that does not come back"},
    {"ZT105", kWarning, kNo, kNoOption, "a one-segment name that is no text"},
    {"ZT106", kWarning, kYes, kNoOption, "an unknown word"},
    {"ZT110", kWarning, kNo, kNoOption, "a frequency outside of the signal's bands"},
    {"ZT111", kWarning, kOption, Option::FixUnits, "a frequency in another unit"},
    {"ZT112", kWarning, kOption, Option::FixUnits, "a symbol rate outside of what there is"},
    {"ZT113", kWarning, kNo, kNoOption, "an orbital position that there is not"},
    {"ZT114", kWarning, kNo, kNoOption, "RF channel and frequency disagree"},
    {"ZT115", kNote, kNo, kNoOption, "identifiers that no one-segment service has"},
    {"ZT200", kError, kYes, kNoOption, "a second table or band"},
    {"ZT201", kWarning, kYes, kNoOption, "satellites that are not numbered in order"},
    {"ZT202", kWarning, kYes, kNoOption, "a text is missing"},
    {"ZT203", kWarning, kYes, kNoOption, "the last satellite has no Ku-Band"},
    {"ZT204", kWarning, kNo, kNoOption, "a satellite or a transponder twice, or in the wrong band"},
    {"ZT205", kWarning, kNo, kNoOption, "LNB frequencies that contradict each other"},
    {"ZT220", kError, kYes, kNoOption, "a dish is missing"},
    {"ZT221", kError, kYes, kNoOption, "a second SAT_SETTING or dish"},
    {"ZT222", kWarning, kNo, kNoOption, "a satellite that the catalogue lacks"},
    {"ZT223", kWarning, kNo, kNoOption, "an LNB or a band that there is not"},
    {"ZT224", kWarning, kYes, kNoOption, "an assignment twice"},
    {"ZT225", kWarning, kNo, kNoOption, "an assignment that each save appends"},
    {"ZT226", kNote, kNo, kNoOption, "channels that no dish receives"},
    {"ZT240", kWarning, kNo, kNoOption, "presets in another place"},
    {"ZT241", kError, kNo, kNoOption, "an area number twice"},
    {"ZT242", kWarning, kNo, kNoOption, "no area for customer lists"},
    {"ZT243", kWarning, kYes, kNoOption, "a selection that names no list"},
    {"ZT900", kError, kNo, kNoOption, "the library reads otherwise than the check"},
};

static_assert(std::ranges::is_sorted(kCodes, {}, &Code::name));

}  // namespace

std::span<const Code> Codes() { return kCodes; }

const Code* FindCode(std::string_view name) {
  const Code* code = std::ranges::lower_bound(kCodes, name, {}, &Code::name);
  return code != std::end(kCodes) && code->name == name ? code : nullptr;
}

const char* NameOf(Severity severity) {
  constexpr const char* kNames[] = {"error", "warning", "note"};
  return kNames[static_cast<std::size_t>(severity)];
}

// A function has the same name.
const char* NameOf(enum Repair repair) {
  constexpr const char* kNames[] = {"no", "yes", "option"};
  return kNames[static_cast<std::size_t>(repair)];
}

const char* NameOf(Option option) {
  constexpr const char* kNames[] = {nullptr,     "--renumber",        "--fix-units",
                                    "--restore", "--drop-duplicates", "--drop-unrepairable",
                                    "--to-utf8", "--codepage"};
  return kNames[static_cast<std::size_t>(option)];
}

}  // namespace zortunedex::kit::check
