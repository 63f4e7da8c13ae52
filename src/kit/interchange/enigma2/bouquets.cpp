#include "kit/interchange/enigma2/bouquets.h"

#include "kit/interchange/services/plain_service.h"
#include "kit/interchange/text_lines.h"
#include "kit/interchange/text_parts.h"

namespace zortunedex::kit::interchange::enigma2 {
namespace {

constexpr std::size_t kLongestDescription = 1024;

/// What follows "#WORD " or "#WORD: "; nothing for another line.
std::optional<std::string_view> Behind(std::string_view word, std::string_view line) {
  if (!line.starts_with(word)) return std::nullopt;
  line.remove_prefix(word.size());
  if (line.starts_with(':')) line.remove_prefix(1);
  if (!line.empty() && line.front() != ' ') return std::nullopt;
  return line.empty() ? line : line.substr(1);
}

/// "1:0:1:6DCA:44D:1:C00000:0:0:0:"; nothing for everything else that can stand in a bouquet.
std::optional<ServiceKey> ParseReference(std::string_view text) {
  const std::string_view kind = TakeUpTo(':', text);
  const std::string_view flags = TakeUpTo(':', text);
  const auto type = ParseHex(TakeUpTo(':', text));
  const auto service = ParseHex(TakeUpTo(':', text), UINT16_MAX);
  const auto stream = ParseHex(TakeUpTo(':', text), UINT16_MAX);
  const auto network = ParseHex(TakeUpTo(':', text), UINT16_MAX);
  const auto nameSpace = ParseHex(TakeUpTo(':', text));
  for (int unused = 0; unused < 3; ++unused) TakeUpTo(':', text);
  const bool isBroadcast = kind == "1" && flags == "0" && text.empty();
  if (!isBroadcast || !type || !service || !stream || !network || !nameSpace) return std::nullopt;
  return ServiceKey{{*nameSpace, *stream, *network}, *service};
}

/// The file between the quotes of "1:7:1:...:FROM BOUQUET "FILE" ORDER BY bouquet".
std::optional<std::string> BouquetFile(std::string_view text) {
  if (!text.starts_with("1:7:")) return std::nullopt;
  TakeUpTo('"', text);
  const std::size_t end = text.find('"');
  if (end == std::string_view::npos) return std::nullopt;
  return std::string(text.substr(0, end));
}

class BouquetReader {
 public:
  BouquetReader(const Input& input, Losses& losses)
      : m_input(input), m_losses(losses), m_there(input.names.begin(), input.names.end()) {}

  Bouquets Read() {
    for (const char* file : {"bouquets.tv", "bouquets.radio"}) TakeIndex(file);
    for (const bool isFavorites : {false, true}) {
      for (const std::string& file : m_files) {
        if (file.starts_with("userbouquet.favourites.") == isFavorites) {
          TakeBouquet(file, isFavorites);
        }
      }
    }
    return std::move(m_bouquets);
  }

 private:
  void Lose(Code code, const std::string& file, const TextLine& line) {
    Place place;
    place.line = line.number;
    m_losses.Add(code, "#SERVICE", place, PlainText(file) + ": " + Excerpt(line.text));
  }

  /// A bouquet that is there, once; names lead nowhere else.
  void TakeIndex(const std::string& index) {
    const std::optional<std::string> bytes = m_input.read(index);
    if (!bytes) return;
    TextLines lines(*bytes);
    while (const std::optional<TextLine> line = lines.Next()) {
      if (line->text.empty() || Behind("#NAME", line->text)) continue;
      const std::optional<std::string_view> reference = Behind("#SERVICE", line->text);
      const std::optional<std::string> file =
          reference ? BouquetFile(*reference) : std::optional<std::string>();
      if (!file || !m_there.contains(*file)) {
        Lose(Code::LineNotUnderstood, index, *line);
      } else if (m_seen.insert(*file).second) {
        m_files.push_back(*file);
      }
    }
  }

  void TakeBouquet(const std::string& file, bool isFavorites) {
    const std::optional<std::string> bytes = m_input.read(file);
    if (!bytes) return;
    std::optional<ServiceKey> last;
    TextLines lines(*bytes);
    while (const std::optional<TextLine> line = lines.Next()) {
      if (line->text.empty() || Behind("#NAME", line->text)) continue;
      if (const auto reference = Behind("#SERVICE", line->text)) {
        last = ParseReference(*reference);
        last ? TakeService(*last, isFavorites) : Lose(Code::NoPlace, file, *line);
      } else if (const auto name = Behind("#DESCRIPTION", line->text)) {
        // Of what is no service it is gone with it.
        if (last) TakeName(*last, *name);
      } else {
        Lose(Code::LineNotUnderstood, file, *line);
      }
    }
  }

  void TakeService(const ServiceKey& key, bool isFavorites) {
    if (isFavorites) m_bouquets.favorites.insert(key);
    if (m_ordered.insert(key).second) m_bouquets.order.push_back(key);
  }

  void TakeName(const ServiceKey& key, std::string_view name) {
    if (name.empty()) return;
    m_bouquets.names.try_emplace(key, PlainText(name.substr(0, kLongestDescription)));
  }

  const Input& m_input;
  Losses& m_losses;
  std::set<std::string> m_there;
  std::vector<std::string> m_files;
  std::set<std::string> m_seen;
  std::set<ServiceKey> m_ordered;
  Bouquets m_bouquets;
};

}  // namespace

Bouquets ReadBouquets(const Input& input, Losses& losses) {
  return BouquetReader(input, losses).Read();
}

}  // namespace zortunedex::kit::interchange::enigma2
