#include "kit/interchange/enigma2/lamedb.h"

#include "kit/failure.h"
#include "kit/interchange/services/plain_service.h"
#include "kit/interchange/text_lines.h"
#include "kit/interchange/text_parts.h"
#include "kit/text/ascii.h"

namespace zortunedex::kit::interchange::enigma2 {
namespace {

/// More parameters than any transponder has, and a longer name than any list holds.
constexpr std::size_t kMostValues = 32;
constexpr std::size_t kLongestNameRead = 1024;

std::optional<TransponderKey> ParseTransponderKey(std::string_view& rest) {
  const auto nameSpace = ParseHex(TakeUpTo(':', rest));
  const auto stream = ParseHex(TakeUpTo(':', rest), UINT16_MAX);
  const auto network = ParseHex(TakeUpTo(':', rest), UINT16_MAX);
  if (!nameSpace || !stream || !network) return std::nullopt;
  return TransponderKey{*nameSpace, *stream, *network};
}

bool IsBlank(char letter) { return letter == ' ' || letter == '\t'; }

class LamedbReader {
 public:
  explicit LamedbReader(Losses& losses) : m_losses(losses) {}

  Lamedb Read(std::string_view bytes) {
    TextLines lines(bytes);
    const std::optional<TextLine> head = lines.Next();
    const std::string_view text = head ? head->text : std::string_view();
    if (text == "eDVB services /4/") {
      while (const std::optional<TextLine> line = lines.Next()) TakeLine(*line);
      FinishService();
    } else if (text == "eDVB services /5/") {
      while (const std::optional<TextLine> line = lines.Next()) TakeLineOfFive(*line);
    } else {
      throw Failure{E_INVALIDARG, "the file is no lamedb of the fourth or fifth form"};
    }
    return std::move(m_lamedb);
  }

 private:
  enum class Part { Head, Transponders, Services, End };

  void Refuse(const TextLine& line) {
    Place place;
    place.line = line.number;
    m_losses.Add(Code::LineNotUnderstood, "line", place, Excerpt(line.text));
  }

  void TakeLine(const TextLine& line) {
    switch (m_part) {
      case Part::Head:
        if (line.text != "transponders") return Refuse(line);
        m_part = Part::Transponders;
        return;
      case Part::Transponders:
        return TakeTransponderLine(line);
      case Part::Services:
        return TakeServiceLine(line);
      case Part::End:
        // Receivers sign the file behind its end.
        return;
    }
  }

  void TakeTransponderLine(const TextLine& line) {
    std::string_view text = line.text;
    if (text == "end") {
      m_part = Part::Services;
      m_transponder.reset();
    } else if (text == "/") {
      m_transponder.reset();
    } else if (!text.empty() && IsBlank(text.front())) {
      while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
      if (!m_transponder || text.size() < 2 || text[1] != ' ') return Refuse(line);
      AddTransponder(*m_transponder, text.front(), text.substr(2), {}, line);
      m_transponder.reset();
    } else {
      m_transponder = ParseTransponderKey(text);
      if (!m_transponder || !text.empty()) Refuse(line);
    }
  }

  void AddTransponder(const TransponderKey& key, char kind, std::string_view values,
                      std::string_view more, const TextLine& line) {
    Transponder transponder{kind, {}, PlainText(more), line.number};
    while (!values.empty() && transponder.values.size() < kMostValues) {
      transponder.values.push_back(PlainText(TakeUpTo(':', values)));
    }
    if (m_lamedb.transponders.try_emplace(key, std::move(transponder)).second) return;
    Place place;
    place.line = line.number;
    m_losses.Add(Code::IdentityTwice, "transponder", place, Excerpt(line.text));
  }

  /// Three lines: reference, name, data.
  void TakeServiceLine(const TextLine& line) {
    if (!m_service && line.text == "services" && m_lamedb.services.empty()) return;
    if (!m_service && line.text == "end") {
      m_part = Part::End;
    } else if (!m_service) {
      m_service = ParseService(line.text, line.number);
      m_hasName = false;
      if (!m_service) Refuse(line);
    } else if (!m_hasName) {
      m_service->name = PlainText(line.text.substr(0, kLongestNameRead));
      m_hasName = true;
    } else {
      m_service->data = line.text;
      FinishService();
    }
  }

  void FinishService() {
    if (m_service) m_lamedb.services.push_back(std::move(*m_service));
    m_service.reset();
  }

  static std::optional<ServiceEntry> ParseService(std::string_view text, std::size_t line) {
    ServiceEntry service;
    const auto id = ParseHex(TakeUpTo(':', text), UINT16_MAX);
    const std::optional<TransponderKey> key = ParseTransponderKey(text);
    const auto type = ParseNumber(TakeUpTo(':', text), 0, UINT32_MAX);
    if (!id || !key || !type) return std::nullopt;
    service.key = {*key, *id};
    service.type = static_cast<std::uint32_t>(*type);
    service.rest = PlainText(text);
    service.line = line;
    return service;
  }

  void TakeLineOfFive(const TextLine& line) {
    std::string_view text = line.text;
    if (text.empty() || text.front() == '#') return;
    const std::string_view kind = TakeUpTo(':', text);
    const bool isTaken =
        (kind == "t" && TakeTransponder(text, line)) || (kind == "s" && TakeService(text, line));
    if (!isTaken) Refuse(line);
  }

  bool TakeTransponder(std::string_view text, const TextLine& line) {
    std::string_view keyText = TakeUpTo(',', text);
    const std::optional<TransponderKey> key = ParseTransponderKey(keyText);
    std::string_view values = TakeUpTo(',', text);
    const std::string_view kind = TakeUpTo(':', values);
    if (!key || !keyText.empty() || kind.size() != 1) return false;
    AddTransponder(*key, kind.front(), values, text, line);
    return true;
  }

  bool TakeService(std::string_view text, const TextLine& line) {
    std::optional<ServiceEntry> service = ParseService(TakeUpTo(',', text), line.number);
    if (!service || text.empty() || text.front() != '"') return false;
    text.remove_prefix(1);
    std::size_t end = text.find("\",");
    if (end == std::string_view::npos && text.ends_with('"')) end = text.size() - 1;
    if (end == std::string_view::npos) return false;
    service->name = PlainText(text.substr(0, std::min(end, kLongestNameRead)));
    if (end + 2 < text.size()) service->data = text.substr(end + 2);
    m_lamedb.services.push_back(std::move(*service));
    return true;
  }

  Losses& m_losses;
  Lamedb m_lamedb;
  Part m_part = Part::Head;
  std::optional<TransponderKey> m_transponder;
  std::optional<ServiceEntry> m_service;
  bool m_hasName = false;
};

}  // namespace

Lamedb ReadLamedb(std::string_view bytes, Losses& losses) {
  return LamedbReader(losses).Read(bytes);
}

}  // namespace zortunedex::kit::interchange::enigma2
