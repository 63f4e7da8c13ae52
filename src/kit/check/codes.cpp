#include "kit/check/codes.h"

#include <algorithm>
#include <iterator>

namespace check {
namespace {

constexpr auto E = Severity::Error;
constexpr auto W = Severity::Warning;
constexpr auto N = Severity::Note;
constexpr auto kYes = Repair::Yes;
constexpr auto kOption = Repair::Option;
constexpr auto kNo = Repair::No;
constexpr auto kNone = Option::None;

constexpr Code kCodes[] = {
    {"ZT001", E, kYes, kNone, "the file is not well-formed"},
    {"ZT002", E, kOption, Option::Restore, "a file put aside holds channels that the file lacks"},
    {"ZT003", N, kYes, kNone, "a file put aside adds nothing"},
    {"ZT004", W, kYes, kNone, "a file left over from a save"},
    {"ZT005", N, kNo, kNone, "a file is missing that channels need"},
    {"ZT006", W, kYes, kNone, "a file of no bytes"},
    {"ZT007", E, kYes, kNone, "bytes that are not UTF-8"},
    {"ZT008", N, kOption, Option::ToUtf8, "an encoding that is not looked into"},
    {"ZT009", W, kYes, kNone, "a name in other letters, a link, or a file that is write-protected"},
    {"ZT020", E, kYes, kNone, "raw markup in a value"},
    {"ZT021", E, kYes, kNone, "broken markup"},
    {"ZT022", E, kYes, kNone, "a character that XML does not have"},
    {"ZT023", E, kYes, kNone, "a document type, or more than a parser takes"},
    {"ZT024", E, kYes, kNone, "an attribute twice in a tag"},
    {"ZT025", E, kOption, Option::DropUnrepairable, "raw markup that splits in several ways"},
    {"ZT026", W, kNo, kNone, "a raw tab or line break in a value"},
    {"ZT031", N, kNo, kNone, "what the library does not know"},
    {"ZT032", W, kNo, kNone, "an unknown element inside of ElementStreams"},
    {"ZT040", E, kNo, kNone, "the document element is no CHANNELTABLE"},
    {"ZT041", E, kYes, kNone, "a country twice"},
    {"ZT042", E, kYes, kNone, "a key in another spelling"},
    {"ZT043", E, kYes, kNone, "a channel set twice"},
    {"ZT044", W, kYes, kNone, "countries or channel sets out of order"},
    {"ZT046", W, kYes, kNone, "empty channels of a signal that the file cannot hold"},
    {"ZT047", W, kNo, kNone, "an unknown signal or country"},
    {"ZT060", E, kYes, kNone, "an index twice"},
    {"ZT061", W, kYes, kNone, "no usable index"},
    {"ZT062", W, kOption, Option::Renumber, "indexes with gaps or out of order"},
    {"ZT070", W, kOption, Option::DropDuplicates, "a service twice"},
    {"ZT080", W, kYes, kNone, "a count above the streams"},
    {"ZT081", E, kYes, kNone, "a count below the streams"},
    {"ZT082", E, kNo, kNone, "more streams than a station can hold"},
    {"ZT083", W, kYes, kNone, "a selected stream that is not there"},
    {"ZT084", W, kNo, kNone, "a PID above 8191"},
    {"ZT085", N, kNo, kNone, "a PID of tables, or twice"},
    {"ZT086", W, kYes, kNone, "a language of more than twelve bits"},
    {"ZT087", W, kNo, kNone, "a component without a place of its own"},
    {"ZT100", W, kYes, kNone, "a number with other text"},
    {"ZT101", W, kNo, kNone, "a number beyond its field"},
    {"ZT103", W, kNo, kNone, "a text that does not come back"},
    {"ZT105", W, kNo, kNone, "a one-segment name that is no text"},
    {"ZT106", W, kYes, kNone, "an unknown word"},
    {"ZT110", W, kNo, kNone, "a frequency outside of the signal's bands"},
    {"ZT111", W, kOption, Option::FixUnits, "a frequency in another unit"},
    {"ZT112", W, kOption, Option::FixUnits, "a symbol rate outside of what there is"},
    {"ZT113", W, kNo, kNone, "an orbital position that there is not"},
    {"ZT114", W, kNo, kNone, "RF channel and frequency disagree"},
    {"ZT115", N, kNo, kNone, "identifiers that no one-segment service has"},
    {"ZT200", E, kYes, kNone, "a second table or band"},
    {"ZT201", W, kYes, kNone, "satellites that are not numbered in order"},
    {"ZT202", W, kYes, kNone, "a text is missing"},
    {"ZT203", W, kYes, kNone, "the last satellite has no Ku-Band"},
    {"ZT204", W, kNo, kNone, "a satellite or a transponder twice, or in the wrong band"},
    {"ZT205", W, kNo, kNone, "LNB frequencies that contradict each other"},
    {"ZT220", E, kYes, kNone, "a dish is missing"},
    {"ZT221", E, kYes, kNone, "a second SAT_SETTING or dish"},
    {"ZT222", W, kNo, kNone, "a satellite that the catalogue lacks"},
    {"ZT223", W, kNo, kNone, "an LNB or a band that there is not"},
    {"ZT224", W, kYes, kNone, "an assignment twice"},
    {"ZT225", W, kNo, kNone, "an assignment that each save appends"},
    {"ZT226", N, kNo, kNone, "channels that no dish receives"},
    {"ZT240", W, kNo, kNone, "presets in another place"},
    {"ZT241", E, kNo, kNone, "an area number twice"},
    {"ZT242", W, kNo, kNone, "no area for customer lists"},
    {"ZT243", W, kYes, kNone, "a selection that names no list"},
    {"ZT900", E, kNo, kNone, "the library reads otherwise than the check"},
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

const char* NameOf(Repair repair) {
  constexpr const char* kNames[] = {"no", "yes", "option"};
  return kNames[static_cast<std::size_t>(repair)];
}

const char* NameOf(Option option) {
  constexpr const char* kNames[] = {nullptr,
                                    "--renumber",
                                    "--fix-units",
                                    "--restore",
                                    "--drop-duplicates",
                                    "--drop-unrepairable",
                                    "--to-utf8",
                                    "--codepage"};
  return kNames[static_cast<std::size_t>(option)];
}

}  // namespace check
