#include "platform/linux/registry/reg_reader.h"

#include <algorithm>

#include "platform/linux/registry/reg_text.h"
#include "platform/text.h"

namespace {

using reg_text::Trim;

constexpr std::string_view kWideMark = "\xFF\xFE";
constexpr std::string_view kNarrowMark = "\xEF\xBB\xBF";

bool IsEnd(std::u16string_view behind) {
  behind = Trim(behind);
  return behind.empty() || behind.front() == u';';
}

/// The text between the quote that `from` begins with and the next one, which is taken too. A
/// backslash that escapes nothing stands for itself.
std::optional<std::u16string> TakeQuoted(std::u16string_view& from) {
  std::u16string text;
  for (std::size_t index = 1; index < from.size(); ++index) {
    if (from[index] == u'"') {
      from.remove_prefix(index + 1);
      return text;
    }
    const bool isEscape = from[index] == u'\\' && index + 1 < from.size() &&
                          (from[index + 1] == u'"' || from[index + 1] == u'\\');
    if (isEscape) ++index;
    text += from[index];
  }
  return std::nullopt;
}

bool IsNumber(std::u16string_view data) {
  static constexpr std::u16string_view kPrefix = u"dword:";
  if (!data.starts_with(kPrefix)) return false;
  data = Trim(data.substr(kPrefix.size()));
  const auto isDigit = [](char16_t unit) {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f') ||
           (unit >= u'A' && unit <= u'F');
  };
  return !data.empty() && data.size() <= 8 && std::all_of(data.begin(), data.end(), isDigit);
}

constexpr std::u16string_view kPlainText = u"hex(1):";
constexpr std::u16string_view kExpandableText = u"hex(2):";
constexpr std::u16string_view kTextList = u"hex(7):";

}  // namespace

bool RegReader::Read(std::string_view bytes) {
  if (!Decode(bytes)) return false;
  while (!m_rest.empty()) {
    const std::u16string_view line = Trim(NextLine());
    if (line.starts_with(u'[')) {
      ReadSection(line);
    } else if (!m_key.empty() && (line.starts_with(u'"') || line.starts_with(u'@'))) {
      ReadValue(line);
    }
  }
  return true;
}

bool RegReader::Decode(std::string_view bytes) {
  if (bytes.starts_with(kWideMark)) {
    m_text = reg_text::FromBytes(bytes.substr(kWideMark.size()));
  } else {
    if (bytes.starts_with(kNarrowMark)) bytes.remove_prefix(kNarrowMark.size());
    m_isOld = bytes.starts_with("REGEDIT4");
    m_text = (m_isOld ? text::FromNarrow(bytes) : text::FromUtf8(bytes)).View();
    m_file.m_isWhole = m_text.find(u'\uFFFD') == std::u16string::npos;
  }
  m_rest = m_text;
  return !m_rest.empty() &&
         Trim(NextLine()) == (m_isOld ? reg_text::kOldHeader : reg_text::kHeader);
}

std::u16string_view RegReader::NextLine() {
  const std::size_t end = std::min(m_rest.find(u'\n'), m_rest.size());
  const std::u16string_view line = m_rest.substr(0, end);
  m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
  return line;
}

void RegReader::ReadSection(std::u16string_view line) {
  m_key.clear();
  const std::size_t end = line.rfind(u']');
  if (end == std::u16string_view::npos || !IsEnd(line.substr(end + 1))) return;
  std::u16string_view path = line.substr(1, end - 1);
  const bool isDeleted = path.starts_with(u'-');
  if (isDeleted) path.remove_prefix(1);
  while (path.ends_with(u'\\')) path.remove_suffix(1);
  if (!reg_text::Fold(path.substr(0, 5)).starts_with(u"hkey_")) return;
  if (isDeleted) {
    m_file.DeleteTree(path);
  } else {
    m_key = path;
    m_file.AddKey(path);
  }
}

void RegReader::ReadValue(std::u16string_view line) {
  std::optional<std::u16string> name(std::in_place);
  if (line.front() == u'"') {
    name = TakeQuoted(line);
  } else {
    line.remove_prefix(1);
  }
  line = Trim(line);
  if (!name || !line.starts_with(u'=')) return;
  const std::u16string_view data = Trim(line.substr(1));
  if (data.starts_with(u'"')) {
    ReadText(*name, data);
  } else if (data.starts_with(u"hex")) {
    ReadHex(*name, data);
  } else if (IsNumber(data)) {
    m_file.Set(m_key, {*name, {}, std::u16string(data)});
  } else if (data == u"-") {
    m_file.DeleteValue(m_key, *name);
  }
}

void RegReader::ReadText(std::u16string_view name, std::u16string_view data) {
  // Line ends stand in a text as they are, so it may go on in the lines that follow.
  std::u16string_view from(data.data(),
                           m_text.size() - static_cast<std::size_t>(data.data() - m_text.data()));
  const std::optional<std::u16string> value = TakeQuoted(from);
  if (!value || !IsEnd(from.substr(0, from.find(u'\n')))) return;
  m_file.SetText(m_key, name, *value);
  m_rest = from;
  NextLine();
}

void RegReader::ReadHex(std::u16string_view name, std::u16string_view data) {
  const std::size_t colon = data.find(u':');
  if (colon == std::u16string_view::npos) return;
  const std::u16string_view prefix = data.substr(0, colon + 1);
  const bool isTyped = prefix.starts_with(u"hex(") && prefix.ends_with(u"):");
  if (prefix != u"hex:" && !isTyped) return;
  const std::u16string_view behind = m_rest;
  std::string bytes;
  const std::optional<std::u16string> lines = ReadHexLines(data.substr(colon + 1), bytes);
  if (lines) {
    StoreHex(name, prefix, *lines, bytes);
  } else {
    m_rest = behind;
  }
}

/// The lines as they stand, and the bytes that they list; none when one of them is something else.
std::optional<std::u16string> RegReader::ReadHexLines(std::u16string_view line,
                                                      std::string& bytes) {
  std::u16string lines(line);
  for (;;) {
    const bool goesOn = line.ends_with(u'\\');
    if (goesOn) line.remove_suffix(1);
    const std::optional<std::string> some = reg_text::FromHex(line);
    if (!some) return std::nullopt;
    bytes += *some;
    if (!goesOn) return lines;
    if (m_rest.empty()) return std::nullopt;
    line = NextLine();
    while (line.ends_with(u'\r') || line.ends_with(u' ')) line.remove_suffix(1);
    lines.append(u"\r\n").append(line);
  }
}

void RegReader::StoreHex(std::u16string_view name, std::u16string_view prefix,
                         std::u16string_view lines, const std::string& bytes) {
  RegFile::Value value = {std::u16string(name), {}, std::u16string(prefix).append(lines)};
  if (prefix == kPlainText || prefix == kExpandableText || prefix == kTextList) {
    std::u16string wide =
        m_isOld ? std::u16string(text::FromNarrow(bytes).View()) : reg_text::FromBytes(bytes);
    if (m_isOld) value.data = reg_text::ToHex(prefix, reg_text::ToBytes(wide));
    if (wide.ends_with(u'\0')) wide.pop_back();
    if (prefix != kTextList) value.text = std::move(wide);
  }
  m_file.Set(m_key, std::move(value));
}
