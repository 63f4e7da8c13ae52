#include "platform/linux/markup/start_tag.h"

#include <algorithm>

#include "platform/linux/markup/blanks.h"

namespace domtree {
namespace {

constexpr std::string_view kNameEnds = "= \t\r\n";

}  // namespace

StartTag::StartTag(std::string_view tag) : m_rest(tag) { TakeUpTo(kBlanks); }

std::string_view StartTag::NextName() {
  m_rest.remove_prefix(std::min(m_rest.find_first_not_of(kBlanks), m_rest.size()));
  const std::string_view name = TakeUpTo(kNameEnds);
  TakeUpTo("\"'");
  if (m_rest.empty()) return name;
  const std::string_view quote = m_rest.substr(0, 1);
  m_rest.remove_prefix(1);
  TakeUpTo(quote);
  m_rest.remove_prefix(std::min<std::size_t>(1, m_rest.size()));
  return name;
}

std::string_view StartTag::TakeUpTo(std::string_view ends) {
  const std::string_view taken = m_rest.substr(0, m_rest.find_first_of(ends));
  m_rest.remove_prefix(taken.size());
  return taken;
}

}  // namespace domtree
