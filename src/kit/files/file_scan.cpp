#include "kit/files/file_scan.h"

#include "kit/failure.h"
#include "kit/files/whole_file.h"
#include "kit/text/ascii.h"
#include "kit/text/utf.h"

namespace zortunedex::kit::file_scan {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

void SkipBlanks(std::string_view& rest) {
  const std::size_t first = rest.find_first_not_of(kBlanks);
  rest.remove_prefix(first == std::string_view::npos ? rest.size() : first);
}

/// Takes what stands in front of the next of `ends`.
std::string_view TakeUpTo(std::string_view& rest, std::string_view ends) {
  const std::string_view taken = rest.substr(0, rest.find_first_of(ends));
  rest.remove_prefix(taken.size());
  return taken;
}

/// Character of a reference without its & and ; or nothing for one that is not known.
std::optional<std::uint32_t> Character(std::string_view reference) {
  if (reference.starts_with("#x")) {
    return static_cast<std::uint32_t>(
        ParseNumber("0x" + std::string(reference.substr(2)), 0, 0x10FFFF).value_or(0xFFFD));
  }
  if (reference.starts_with('#')) {
    return static_cast<std::uint32_t>(
        ParseNumber(reference.substr(1), 0, 0x10FFFF).value_or(0xFFFD));
  }
  if (reference == "amp") return '&';
  if (reference == "lt") return '<';
  if (reference == "gt") return '>';
  if (reference == "quot") return '"';
  if (reference == "apos") return '\'';
  return std::nullopt;
}

std::string Resolve(std::string_view raw) {
  std::string value;
  while (!raw.empty()) {
    value += TakeUpTo(raw, "&");
    if (raw.empty()) break;
    const std::size_t end = raw.find(';');
    const auto character =
        end == std::string_view::npos ? std::nullopt : Character(raw.substr(1, end - 1));
    if (character) {
      utf::Append(value, *character);
      raw.remove_prefix(end + 1);
    } else {
      value += '&';
      raw.remove_prefix(1);
    }
  }
  return value;
}

/// Takes one attribute; false at the end of the tag and at what is none.
bool TakeAttribute(std::string_view& rest, Tag& tag) {
  SkipBlanks(rest);
  const std::string_view name = TakeUpTo(rest, "= \t\r\n/>");
  SkipBlanks(rest);
  if (name.empty() || !rest.starts_with('=')) return false;
  rest.remove_prefix(1);
  SkipBlanks(rest);
  if (rest.empty() || (rest.front() != '"' && rest.front() != '\'')) return false;
  const std::string_view quote = rest.substr(0, 1);
  rest.remove_prefix(1);
  const std::string_view raw = TakeUpTo(rest, quote);
  if (rest.empty()) return false;
  rest.remove_prefix(1);
  tag.attributes.push_back({name, Resolve(raw)});
  return true;
}

/// Skips up to and with `end`.
void SkipPast(std::string_view& rest, std::string_view end) {
  const std::size_t found = rest.find(end);
  rest.remove_prefix(found == std::string_view::npos ? rest.size() : found + end.size());
}

/// Skips what begins like a tag and is none.
bool SkipOther(std::string_view& rest) {
  if (rest.starts_with("<!--")) {
    SkipPast(rest, "-->");
  } else if (rest.starts_with("<![CDATA[")) {
    SkipPast(rest, "]]>");
  } else if (rest.starts_with("<?")) {
    SkipPast(rest, "?>");
  } else if (rest.starts_with("<!")) {
    SkipPast(rest, ">");
  } else {
    return false;
  }
  return true;
}

Tag TakeTag(std::string_view& rest) {
  Tag tag;
  rest.remove_prefix(1);
  tag.closing = rest.starts_with('/');
  if (tag.closing) rest.remove_prefix(1);
  tag.name = TakeUpTo(rest, " \t\r\n/>");
  while (TakeAttribute(rest, tag)) {
  }
  const bool isEmpty = tag.closing || rest.starts_with('/');
  SkipPast(rest, ">");
  std::string_view behind = rest;
  SkipBlanks(behind);
  tag.hasContent = !isEmpty && !behind.starts_with("</");
  return tag;
}

void Take(const Tag& tag, Contents& contents) {
  if (tag.closing) return;
  if (tag.name == "CHANNELTABLE") contents.table = true;
  if (tag.name == "Country") {
    const std::string* name = tag.Find("name");
    contents.countries.push_back(
        {tag.Number("countrycode"), name == nullptr ? std::string() : *name});
  }
  if (tag.name == "ChannelSet" && !contents.countries.empty()) {
    contents.sets.push_back({contents.countries.back().code,
                             static_cast<InputSignalType>(tag.Number("inputSignalType")), 0});
  }
  if (tag.name == "Channel" && !contents.sets.empty()) ++contents.sets.back().channels;
}

}  // namespace

const std::string* Tag::Find(std::string_view attribute) const {
  for (const Attribute& candidate : attributes) {
    if (candidate.name == attribute) return &candidate.value;
  }
  return nullptr;
}

std::uint32_t Tag::Number(std::string_view attribute) const {
  const std::string* value = Find(attribute);
  if (value == nullptr) return 0;
  return static_cast<std::uint32_t>(ParseNumber(*value, INT32_MIN, UINT32_MAX).value_or(0));
}

std::size_t Contents::ChannelCount() const {
  std::size_t count = 0;
  for (const ChannelSet& set : sets) count += set.channels;
  return count;
}

void ForEachTag(std::string_view xml, const std::function<void(const Tag&)>& take) {
  while (true) {
    TakeUpTo(xml, "<");
    if (xml.empty()) return;
    if (!SkipOther(xml)) take(TakeTag(xml));
  }
}

std::filesystem::path FileIn(const std::string& directory, const char* name) {
  return whole_file::PathOf(directory) / name;
}

std::filesystem::path ChannelFile(const std::string& directory) {
  return FileIn(directory, "ChanInfo.xml");
}

std::string ReadWhole(const std::filesystem::path& path) {
  std::string bytes = whole_file::Read(path).value_or("");
  if (bytes.find('\0') != std::string::npos) {
    throw Failure{E_NOTIMPL, path.filename().string() +
                                 " is in an encoding that this command cannot look through"};
  }
  return bytes;
}

Contents Scan(const std::string& directory) {
  Contents contents;
  const std::filesystem::path path = ChannelFile(directory);
  std::error_code ignored;
  contents.exists = std::filesystem::is_regular_file(path, ignored);
  if (!contents.exists) return contents;
  const std::string xml = ReadWhole(path);
  ForEachTag(xml, [&contents](const Tag& tag) { Take(tag, contents); });
  return contents;
}

}  // namespace zortunedex::kit::file_scan
