#include "kit/xml/tree/uri.h"

#include <algorithm>
#include <cstddef>

namespace zortunedex::kit::markup {
namespace {

bool IsLetter(char byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }

bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

bool IsHexDigit(char byte) {
  return IsDigit(byte) || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}

/// Nothing but letters, digits, these marks, and bytes by their two digits.
bool ConsistsOf(std::string_view text, std::string_view marks) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') {
      if (text.size() - i < 3 || !IsHexDigit(text[i + 1]) || !IsHexDigit(text[i + 2])) return false;
      i += 2;
    } else if (!IsLetter(text[i]) && !IsDigit(text[i]) &&
               marks.find(text[i]) == std::string_view::npos) {
      return false;
    }
  }
  return true;
}

constexpr std::string_view kNameMarks = "-._~!$&'()*+,;=";
constexpr std::string_view kPathMarks = "-._~!$&'()*+,;=:@/";
constexpr std::string_view kQueryMarks = "-._~!$&'()*+,;=:@/?";
constexpr std::string_view kFragmentMarks = "-._~!$&'()*+,;=:@/?[]";

/// Length of the scheme in front of its colon; 0 without one.
std::size_t SchemeSize(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos || !IsLetter(text[0])) return 0;
  const std::string_view scheme = text.substr(0, colon);
  const bool isScheme = std::all_of(scheme.begin(), scheme.end(), [](char byte) {
    return IsLetter(byte) || IsDigit(byte) || byte == '+' || byte == '-' || byte == '.';
  });
  return isScheme ? colon : 0;
}

bool IsAuthority(std::string_view text) {
  const std::size_t at = text.find('@');
  if (at != std::string_view::npos) {
    if (!ConsistsOf(text.substr(0, at), "-._~!$&'()*+,;=:")) return false;
    text.remove_prefix(at + 1);
  }
  std::size_t hostEnd = std::min(text.find(':'), text.size());
  if (text.starts_with('[')) {
    const std::size_t bracket = text.find(']');
    if (bracket == std::string_view::npos) return false;
    hostEnd = bracket + 1;
  } else if (!ConsistsOf(text.substr(0, hostEnd), kNameMarks)) {
    return false;
  }
  const std::string_view port = text.substr(hostEnd);
  return port.empty() ||
         (port[0] == ':' && port.size() > 1 && std::all_of(port.begin() + 1, port.end(), IsDigit));
}

/// What stands between the scheme and the query.
bool IsHierarchy(std::string_view text, bool hasScheme) {
  if (text.starts_with("//")) {
    text.remove_prefix(2);
    const std::size_t end = std::min(text.find('/'), text.size());
    if (!IsAuthority(text.substr(0, end))) return false;
    text.remove_prefix(end);
    return ConsistsOf(text, kPathMarks);
  }
  if (!ConsistsOf(text, kPathMarks)) return false;
  // Without a scheme a colon in the first step would make one.
  return hasScheme || text.substr(0, text.find('/')).find(':') == std::string_view::npos;
}

}  // namespace

bool IsUriReference(std::string_view text) {
  const std::size_t fragment = text.find('#');
  if (fragment != std::string_view::npos) {
    if (!ConsistsOf(text.substr(fragment + 1), kFragmentMarks)) return false;
    text = text.substr(0, fragment);
  }
  const std::size_t query = text.find('?');
  if (query != std::string_view::npos) {
    if (!ConsistsOf(text.substr(query + 1), kQueryMarks)) return false;
    text = text.substr(0, query);
  }
  const std::size_t scheme = SchemeSize(text);
  return IsHierarchy(scheme == 0 ? text : text.substr(scheme + 1), scheme != 0);
}

}  // namespace zortunedex::kit::markup
