#include "kit/interchange/vdr/vdr_reader.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "kit/failure.h"
#include "kit/interchange/services/service_channel.h"
#include "kit/interchange/text_parts.h"
#include "kit/interchange/vdr/vdr_line.h"
#include "kit/interchange/vdr/vdr_words.h"

namespace zortunedex::kit::interchange::vdr {
namespace {

/// A line of any length may lose any number of things; what is beyond this is counted.
constexpr std::size_t kMostOfALine = 10'000;

class Reader {
 public:
  Reader(const ImportRequest& request, Losses& losses) : m_request(request), m_losses(losses) {}

  void Take(const TextLine& text) {
    if (text.text.empty()) return;
    if (text.text.starts_with(':')) return TakeGroup(text);
    const Line line = LineOf(text);
    if (line.count < kFewestParts || line.parts[kSource].empty() ||
        line.parts[kParameters].empty()) {
      return Refuse(line);
    }
    const bool isOurs =
        IsSourceOf(line.parts[kSource], line.parts[kParameters], m_request.context.signal);
    isOurs ? TakeChannel(line) : TakeForeign(line);
  }

  ImportResult Result() {
    if (!m_isKnown && m_isRefused) {
      throw Failure{E_INVALIDARG, "the file is no channels.conf"};
    }
    return std::move(m_result);
  }

 private:
  void Refuse(const Line& line) {
    m_isRefused = true;
    m_losses.Add(Code::LineNotUnderstood, "line", {std::nullopt, {}, line.number});
  }

  /// ":@201 Name", ":Name": the number of the next channel, and a title for the menu.
  void TakeGroup(const TextLine& text) {
    m_isKnown = true;
    const Place place{std::nullopt, {}, text.number};
    std::string_view title = text.text.substr(1);
    if (title.starts_with('@')) {
      title.remove_prefix(1);
      const std::size_t end = std::min(title.find_first_not_of("0123456789"), title.size());
      const std::optional<std::uint64_t> number = DigitsOf(title.substr(0, end));
      title.remove_prefix(end);
      if (number && *number > m_last && *number < kHighestNumber) {
        m_next = static_cast<std::uint32_t>(*number);
      } else if (number) {
        m_losses.Add(Code::MarkDropped, "index", place, Shown(*number));
      }
    }
    while (title.starts_with(' ')) title.remove_prefix(1);
    if (!title.empty()) m_losses.Add(Code::NoPlace, "group", place, Utf8Of(title));
  }

  /// Only what a channel has: letters of a source and numbers where they belong.
  void TakeForeign(const Line& line) {
    const char kind = line.parts[kSource].front();
    if (kind < 'A' || kind > 'Z' || !DigitsOf(line.parts[kFrequency])) return Refuse(line);
    m_isKnown = true;
    ++m_result.read;
    m_losses.Add(Code::SignalNotOfList, "channel",
                 {std::nullopt, Utf8Of(line.parts[kName]), line.number},
                 Utf8Of(line.parts[kSource]));
  }

  void TakeChannel(const Line& line) {
    Losses losses(kMostOfALine);
    std::optional<TakenLine> taken = TakeLine(line, m_request.context.signal, losses);
    if (!taken) return Refuse(line);
    Service& service = taken->service;
    m_isKnown = true;
    ++m_result.read;
    const std::string identity = IdentityOf(service, taken->radioId);
    if (identity.empty()) return m_losses.Add(Code::NoIdentity, "channel", taken->place);
    if (!m_identities.insert(identity).second) {
      return m_losses.Add(Code::IdentityTwice, "channel", taken->place, identity);
    }
    service.index = std::exchange(m_next, 0);
    m_last = service.index != 0 ? service.index : m_last + 1;
    Channel channel = ToChannel(service, line.number, m_request, losses);
    m_losses.Take(std::move(losses));
    m_result.Add({std::move(channel), line.number}, m_request);
  }

  const ImportRequest& m_request;
  Losses& m_losses;
  ImportResult m_result;
  std::unordered_set<std::string> m_identities;
  std::uint32_t m_last = 0;  ///< number of the channel before
  std::uint32_t m_next = 0;  ///< given for the next one; 0: the one behind the last
  bool m_isKnown = false;
  bool m_isRefused = false;
};

}  // namespace

ImportResult Read(const Input& input, const ImportRequest& request, Losses& losses) {
  Reader reader(request, losses);
  TextLines lines(input.bytes);
  while (const std::optional<TextLine> line = lines.Next()) reader.Take(*line);
  return reader.Result();
}

}  // namespace zortunedex::kit::interchange::vdr
