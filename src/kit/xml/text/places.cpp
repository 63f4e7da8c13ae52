#include "kit/xml/text/places.h"

#include <algorithm>

#include "kit/xml/text/characters.h"

namespace zortunedex::kit::markup {
namespace {}  // namespace

Places::Places(std::string_view text) : m_text(text) {
  m_marks.reserve(text.size() / kStep + 1);
  Place place;
  for (std::size_t mark = 0; mark <= text.size(); mark += kStep) {
    m_marks.push_back(place);
    Advance(place, mark, std::min(mark + kStep, text.size()));
  }
}

Place Places::Of(std::size_t offset) const {
  offset = std::min(offset, m_text.size());
  const std::size_t mark = offset / kStep;
  Place place = m_marks[mark];
  Advance(place, mark * kStep, offset);
  return place;
}

void Places::Advance(Place& place, std::size_t from, std::size_t to) const {
  if (from == 0 && to >= kByteOrderMark.size() && m_text.starts_with(kByteOrderMark)) {
    from = kByteOrderMark.size();
  }
  for (; from < to; ++from) {
    const char byte = m_text[from];
    const bool isFirstOfTwo = byte == '\r' && from + 1 < m_text.size() && m_text[from + 1] == '\n';
    if ((byte == '\n' || byte == '\r') && !isFirstOfTwo) {
      ++place.line;
      place.column = 1;
    } else if ((static_cast<unsigned char>(byte) & 0xC0) != 0x80) {
      ++place.column;
    }
  }
}

}  // namespace zortunedex::kit::markup
