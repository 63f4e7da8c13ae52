#include "kit/interchange/dvbv5/dvbv5_sections.h"

#include <optional>

#include "kit/interchange/services/plain_service.h"
#include "kit/interchange/text_lines.h"
#include "kit/text/ascii.h"

namespace zortunedex::kit::interchange::dvbv5 {
namespace {

/// Every loss of a section names it: what no list has room for is not carried along.
constexpr std::size_t kLongestName = 1024;

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string Capitals(std::string_view text) {
  std::string capitals(text);
  for (char& letter : capitals) {
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  }
  return capitals;
}

/// The stream type of a key PID_xx.
std::optional<std::uint32_t> PidType(std::string_view key) {
  constexpr std::string_view kPrefix = "PID_";
  if (!key.starts_with(kPrefix) || key.size() != kPrefix.size() + 2) return std::nullopt;
  const auto type = ParseNumber("0x" + std::string(key.substr(kPrefix.size())), 0, UINT8_MAX);
  return type ? std::optional(static_cast<std::uint32_t>(*type)) : std::nullopt;
}

class SectionReader {
 public:
  SectionReader(Losses& losses, const std::function<void(const Section&)>& take)
      : m_losses(losses), m_take(take) {}

  bool Read(std::string_view bytes) {
    TextLines lines(bytes);
    while (const std::optional<TextLine> line = lines.Next()) TakeLine(*line);
    Finish();
    return m_isOfTheKind;
  }

 private:
  void Refuse(const TextLine& line) {
    Place place;
    place.name = m_section.name;
    place.line = line.number;
    m_losses.Add(Code::LineNotUnderstood, "line", place, Excerpt(line.text));
  }

  void TakeLine(const TextLine& line) {
    const std::string_view text = Trimmed(line.text);
    if (text.empty() || text.front() == '#' || text.front() == ';') return;
    if (text.front() == '[') return TakeTitle(line, text);
    const std::size_t equals = text.find('=');
    const std::string_view key = Trimmed(text.substr(0, equals));
    if (equals == std::string_view::npos || key.empty() || !m_isInside) return Refuse(line);
    TakeValue(line, Capitals(key), Trimmed(text.substr(equals + 1, text.find('#') - equals - 1)));
  }

  /// A name may hold brackets: the last one ends it.
  void TakeTitle(const TextLine& line, std::string_view text) {
    Finish();
    m_isInside = true;
    m_section.line = line.number;
    const std::size_t end = text.rfind(']');
    const std::string_view rest =
        end == std::string_view::npos ? text : Trimmed(text.substr(end + 1));
    m_section.isUnderstood = rest.empty() || rest.front() == '#';
    if (!m_section.isUnderstood) return Refuse(line);
    std::string_view title = text.substr(1, end - 1);
    title.remove_prefix(std::min(title.find_first_not_of(" \t"), title.size()));
    if (!EqualIgnoringCase(title, "CHANNEL")) {
      m_section.name = PlainText(title.substr(0, kLongestName));
    }
  }

  void TakeValue(const TextLine& line, std::string key, std::string_view text) {
    if (key == "DELIVERY_SYSTEM" || key == "FREQUENCY") m_isOfTheKind = true;
    Value value{PlainText(text), line.number};
    if (const std::optional<std::uint32_t> type = PidType(key)) {
      m_section.pids.emplace_back(*type, std::move(value));
      return;
    }
    const auto [known, isNew] = m_section.values.try_emplace(std::move(key), value);
    if (isNew) return;
    if (known->second.text != value.text) Refuse({known->second.text, known->second.line});
    known->second = std::move(value);
  }

  void Finish() {
    if (m_isInside) m_take(m_section);
    m_isInside = false;
    m_section = {};
  }

  Losses& m_losses;
  const std::function<void(const Section&)>& m_take;
  Section m_section;
  bool m_isInside = false;  ///< of a section
  bool m_isOfTheKind = false;
};

}  // namespace

std::string_view Section::Text(std::string_view key) const {
  const auto found = values.find(key);
  return found == values.end() ? std::string_view() : std::string_view(found->second.text);
}

bool ReadSections(std::string_view bytes, Losses& losses,
                  const std::function<void(const Section&)>& take) {
  return SectionReader(losses, take).Read(bytes);
}

}  // namespace zortunedex::kit::interchange::dvbv5
