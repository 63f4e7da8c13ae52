#include "platform/linux/markup/attribute_bound.h"

#include <algorithm>

namespace domtree {
namespace {

/// " a=''": what an attribute takes up at least.
constexpr std::size_t kShortestAttribute = 5;

/// Every attribute has one quoted value, and nothing else in a tag is quoted.
std::size_t CountAttributes(std::string_view tag) {
  std::size_t count = 0;
  char quote = '\0';
  for (const char byte : tag) {
    if (quote != '\0') {
      if (byte == quote) quote = '\0';
    } else if (byte == '"' || byte == '\'') {
      quote = byte;
      ++count;
    } else if (byte == '>') {
      break;
    }
  }
  return count;
}

/// What ends something that holds other text than tags; empty where a tag begins.
std::string_view EndMark(std::string_view text) {
  if (text.starts_with("<!--")) return "-->";
  if (text.starts_with("<![CDATA[")) return "]]>";
  if (text.starts_with("<?")) return "?>";
  return {};
}

/// Whether so much stands somewhere behind a "<" without another one that it may be a tag of too
/// many attributes. No value holds a "<" as it is: files of ordinary tags are looked at only here
/// and there.
bool HasLongStretch(std::string_view text) {
  constexpr std::size_t kShort = kMostAttributes * kShortestAttribute;
  text.remove_prefix(std::min(text.find('<'), text.size()));
  while (text.size() > kShort) {
    const std::size_t last = text.rfind('<', kShort);
    if (last == 0) return true;
    text.remove_prefix(last);
  }
  return false;
}

}  // namespace

bool IsWithinAttributeBound(std::string_view text) {
  if (!HasLongStretch(text)) return true;
  std::size_t start = text.find('<');
  while (start != std::string_view::npos) {
    const std::string_view mark = EndMark(text.substr(start));
    if (!mark.empty()) {
      const std::size_t end = text.find(mark, start);
      start = end == std::string_view::npos ? end : text.find('<', end);
      continue;
    }
    // No value holds another one as it is.
    const std::size_t next = text.find('<', start + 1);
    const std::string_view tag = text.substr(start, next - start);
    if (tag.size() > kMostAttributes * kShortestAttribute &&
        CountAttributes(tag) > kMostAttributes) {
      return false;
    }
    start = next;
  }
  return true;
}

}  // namespace domtree
