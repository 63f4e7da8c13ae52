#include "kit/satellites/catalogue_table.h"

#include <algorithm>
#include <cctype>

#include "kit/text/ascii.h"
#include "kit/text/utf.h"

namespace zortunedex::kit::catalogue_table {
namespace {

constexpr std::string_view kBlanks = " \t";

bool IsAlphanumeric(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  while (true) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return words;
    const std::size_t end = std::min(text.find_first_of(kBlanks, first), text.size());
    words.push_back(text.substr(first, end - first));
    text.remove_prefix(end);
  }
}

/// Sections that stand for one transponder among others: [CHANNEL], [channel 10727000].
bool IsPlainTitle(std::string_view title) {
  const std::vector<std::string_view> words = Words(title);
  if (words.empty()) return true;
  return EqualIgnoringCase(words[0], "CHANNEL") &&
         (words.size() == 1 || (words.size() == 2 && ParseNumber(words[1])));
}

class Reader {
 public:
  Table Take(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    while (!bytes.empty()) {
      const std::size_t end = std::min(bytes.find('\n'), bytes.size());
      ++m_line;
      TakeLine(bytes.substr(0, end));
      bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    if (m_table.entries.empty()) throw Malformed{"it has no transponders"};
    return std::move(m_table);
  }

 private:
  [[noreturn]] void Refuse(const std::string& what) const {
    throw Malformed{"line " + std::to_string(m_line) + " " + what};
  }

  void TakeLine(std::string_view raw) {
    const std::string_view line = Trimmed(raw);
    RequireText(line);
    if (line.empty()) return;
    if (line[0] == '#' || line[0] == ';') return TakeComment(Trimmed(line.substr(1)));
    if (line[0] == '[') return TakeSection(line);
    if (line.find('=') != std::string_view::npos) return TakeValue(line);
    TakeZapLine(line.substr(0, line.find('#')));
  }

  void RequireText(std::string_view line) const {
    const std::optional<WideText> wide = utf::ToWide(line);
    if (!wide) Refuse("is not UTF-8");
    const auto isControl = [](OLECHAR c) { return (c < 0x20 && c != '\t') || c >= 0xFFFE; };
    if (std::any_of(wide->begin(), wide->end(), isControl)) Refuse("holds a control character");
  }

  void TakeComment(std::string_view comment) {
    if (!m_table.entries.empty() || m_table.position) return;
    constexpr std::string_view kHead = "Channel table for ";
    // The last position of the line: names of satellites may look like one.
    for (std::size_t at = comment.size(); at-- > 0 && !m_table.position;) {
      if (at > 0 && (IsAlphanumeric(comment[at - 1]) || comment[at - 1] == '.')) continue;
      m_table.position = ParsePosition(comment.substr(at, comment.find_first_of(kBlanks, at) - at));
    }
    const std::size_t end = comment.rfind(" at ");
    if (m_table.position && comment.starts_with(kHead) && end != std::string_view::npos &&
        end >= kHead.size()) {
      m_table.satellite = Trimmed(comment.substr(kHead.size(), end - kHead.size()));
    }
  }

  void TakeSection(std::string_view line) {
    if (!line.ends_with(']')) Refuse("opens a section that is not closed");
    const std::string_view title = Trimmed(line.substr(1, line.size() - 2));
    m_table.entries.push_back({m_line, IsPlainTitle(title) ? "" : std::string(title), {}});
    m_inSection = true;
  }

  void TakeValue(std::string_view line) {
    if (!m_inSection) Refuse("stands outside of a section");
    const std::size_t equals = line.find('=');
    std::string key(Trimmed(line.substr(0, equals)));
    if (key.empty()) Refuse("has no key");
    for (char& c : key) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    m_table.entries.back().values.emplace_back(std::move(key), Trimmed(line.substr(equals + 1)));
  }

  void TakeZapLine(std::string_view line) {
    constexpr const char* kKeys[] = {"DELIVERY_SYSTEM", "FREQUENCY", "POLARIZATION", "SYMBOL_RATE",
                                     "INNER_FEC",       "ROLLOFF",   "MODULATION"};
    const std::vector<std::string_view> words = Words(line);
    const std::string_view system = words.front();
    const bool isSatellite = system == "S" || system == "S1" || system == "S2";
    if (!isSatellite) Refuse("is neither a section, a value nor a line of a satellite");
    if (words.size() < 4 || words.size() > std::size(kKeys)) {
      Refuse("has " + std::to_string(words.size()) + " columns instead of 4 to 7");
    }
    Entry entry{m_line, "", {{kKeys[0], system == "S2" ? "DVBS2" : "DVBS"}}};
    for (std::size_t i = 1; i < words.size(); ++i) entry.values.emplace_back(kKeys[i], words[i]);
    m_table.entries.push_back(std::move(entry));
    m_inSection = false;
  }

  Table m_table;
  std::size_t m_line = 0;
  bool m_inSection = false;
};

}  // namespace

const std::string* Entry::Find(std::string_view key) const {
  for (const auto& [name, value] : values) {
    if (name == key) return &value;
  }
  return nullptr;
}

Table Read(std::string_view bytes) { return Reader().Take(bytes); }

std::optional<Position> ParsePosition(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const bool west = text.back() == 'W' || text.back() == 'w';
  if (!west && text.back() != 'E' && text.back() != 'e') return std::nullopt;
  text.remove_suffix(1);
  constexpr std::string_view kDegree = "\xC2\xB0";
  if (text.ends_with(kDegree)) text.remove_suffix(kDegree.size());
  const std::size_t dot = std::min(text.find('.'), text.size());
  const std::string_view whole = text.substr(0, dot);
  const std::string_view part = dot < text.size() ? text.substr(dot + 1) : "0";
  const auto isNumber = [](std::string_view digits, std::size_t most) {
    return !digits.empty() && digits.size() <= most &&
           digits.find_first_not_of("0123456789") == std::string_view::npos;
  };
  if (!isNumber(whole, 3) || !isNumber(part, 9)) return std::nullopt;
  LONG tenths = static_cast<LONG>(*ParseNumber(whole)) * 10 + (part[0] - '0');
  if (part.size() > 1 && part[1] >= '5') ++tenths;
  if (tenths > 1800) return std::nullopt;
  const bool rounded = part.find_first_not_of('0', 1) != std::string_view::npos;
  return Position{west ? -tenths : tenths, rounded};
}

FileName ParseFileName(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot != std::string_view::npos && dot != 0) {
    const std::string_view extension = name.substr(dot + 1);
    const bool letters = std::all_of(extension.begin(), extension.end(), [](char c) {
      return std::isalpha(static_cast<unsigned char>(c)) != 0;
    });
    if (extension.size() > 1 && letters) name = name.substr(0, dot);
  }
  FileName parsed{std::string(name), std::string(name), std::nullopt};
  const std::size_t separator = name.find_last_of("-_ ");
  if (separator == std::string_view::npos) return parsed;
  parsed.position = ParsePosition(name.substr(separator + 1));
  if (parsed.position) parsed.base = name.substr(0, separator);
  return parsed;
}

}  // namespace zortunedex::kit::catalogue_table
