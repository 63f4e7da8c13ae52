#include "platform/linux/markup/encoding.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>
#include <string>
#include <string_view>

#include "platform/linux/markup/blanks.h"
#include "platform/linux/text/iconv_converter.h"

namespace domtree {
namespace {

using std::string_view_literals::operator""sv;

/// Beginnings of the names that are converted. Others, whose bytes change their meaning with what
/// went before, are of no use in files that people keep, and their converters have been attacked.
constexpr std::array kFamilies = {"ISO-8859-"sv, "windows-"sv, "US-ASCII"sv, "KOI8-"sv,
                                  "Shift_JIS"sv, "EUC-"sv,     "GB2312"sv,   "GBK"sv,
                                  "GB18030"sv,   "Big5"sv};

void SkipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
}

/// The name behind "encoding" in an XML declaration; empty without one.
std::string_view DeclaredName(std::string_view text) {
  if (!text.starts_with("<?xml")) return {};
  std::string_view rest = text.substr(0, text.find("?>"));
  const std::size_t key = rest.find("encoding");
  if (key == std::string_view::npos) return {};
  rest.remove_prefix(key + "encoding"sv.size());
  SkipBlanks(rest);
  if (!rest.starts_with('=')) return {};
  rest.remove_prefix(1);
  SkipBlanks(rest);
  if (rest.empty() || (rest[0] != '"' && rest[0] != '\'')) return {};
  const std::size_t end = rest.find(rest[0], 1);
  return end == std::string_view::npos ? std::string_view() : rest.substr(1, end - 1);
}

bool IsConverted(std::string_view name) {
  return name.find('/') == std::string_view::npos &&
         std::any_of(kFamilies.begin(), kFamilies.end(), [name](std::string_view family) {
           return name.size() >= family.size() &&
                  strncasecmp(name.data(), family.data(), family.size()) == 0;
         });
}

/// The name of the encoding as iconv knows it; empty for none. A byte order mark is taken away.
std::string EncodingOf(std::string_view& text) {
  const bool isMarkedLittle = text.starts_with("\xFF\xFE"sv);
  const bool isMarkedBig = text.starts_with("\xFE\xFF"sv);
  if (isMarkedLittle || isMarkedBig) text.remove_prefix(2);
  if (isMarkedLittle || text.starts_with("<\0?\0"sv)) return "UTF-16LE";
  if (isMarkedBig || text.starts_with("\0<\0?"sv)) return "UTF-16BE";
  const std::string_view name = DeclaredName(text);
  return IsConverted(name) ? std::string(name) : std::string();
}

}  // namespace

bool ConvertToUtf8(FileBytes& file) {
  std::string_view text(file.Data(), file.Size());
  const std::string encoding = EncodingOf(text);
  if (encoding.empty()) return false;
  IconvConverter converter("UTF-8", encoding.c_str());
  std::string utf8;
  if (!converter.IsOpen() && errno == ENOMEM) throw std::bad_alloc();
  if (!converter.IsOpen() || !converter.ConvertAll(text, utf8)) return false;
  return file.Assign(utf8);
}

}  // namespace domtree
