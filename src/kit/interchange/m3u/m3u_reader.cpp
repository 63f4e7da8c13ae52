#include "kit/interchange/m3u/m3u_reader.h"

#include <algorithm>
#include <unordered_map>

#include "kit/failure.h"
#include "kit/interchange/m3u/m3u_entries.h"
#include "kit/interchange/m3u/m3u_identity.h"
#include "kit/text/utf.h"

namespace zortunedex::kit::interchange::m3u {
namespace {

/// Channels by a text; several may share one.
class Directory {
 public:
  void Add(const std::string& text, std::size_t channel) {
    if (!text.empty()) m_channels[text].push_back(channel);
  }

  /// The first one that is still free, else the first one; nothing when there is none.
  std::optional<std::size_t> Find(const std::string& text, const std::vector<bool>& taken) {
    const auto found = m_channels.find(text);
    if (text.empty() || found == m_channels.end()) return std::nullopt;
    std::vector<std::size_t>& channels = found->second;
    std::size_t& next = m_next[text];
    while (next < channels.size() && taken[channels[next]]) ++next;
    return channels[next < channels.size() ? next : 0];
  }

 private:
  std::unordered_map<std::string, std::vector<std::size_t>> m_channels;
  std::unordered_map<std::string, std::size_t> m_next;
};

class Orderer {
 public:
  Orderer(const ImportRequest& request, Losses& losses)
      : m_current(request.current), m_losses(losses), m_taken(m_current.size()) {
    for (std::size_t i = 0; i < m_current.size(); ++i) {
      m_identities.Add(IdentityOf(m_current[i], request.context), i);
      m_triplets.Add(TripletOf(m_current[i], request.context), i);
      m_shown.Add(utf::FromWide(m_current[i].displayName), i);
      m_broadcast.Add(utf::FromWide(m_current[i].name), i);
    }
  }

  void Take(const Entry& entry) {
    const std::string& name = entry.title.empty() ? entry.name : entry.title;
    const Place place{std::nullopt, name, entry.line};
    const std::optional<std::size_t> channel = Find(entry);
    if (!channel) return m_losses.Add(Code::NoIdentity, "channel", place);
    if (m_taken[*channel]) return m_losses.Add(Code::IdentityTwice, "channel", place);
    m_taken[*channel] = true;
    m_marks = m_marks || entry.isFavorite;
    m_order.push_back({*channel, entry});
  }

  std::vector<ImportedChannel> Ordered() {
    // An editor's list has its order in its numbers.
    const bool isNumbered = std::ranges::all_of(
        m_order, [](const Named& named) { return !named.entry.triplet.empty(); });
    if (isNumbered) {
      std::ranges::stable_sort(m_order, {}, [](const Named& named) { return named.entry.number; });
    }
    std::vector<ImportedChannel> channels;
    for (const auto& [number, entry] : m_order) {
      Channel channel = m_current[number];
      channel.index = entry.number;
      if (m_marks && (channel.favorite != 0) != entry.isFavorite) {
        channel.favorite = entry.isFavorite ? 1 : 0;
      }
      channels.push_back({std::move(channel), entry.line});
    }
    for (std::size_t i = 0; i < m_current.size(); ++i) {
      if (m_taken[i]) continue;
      channels.push_back({m_current[i], 0});
      channels.back().channel.index = 0;
    }
    return channels;
  }

 private:
  struct Named {
    std::size_t channel = 0;
    Entry entry;
  };

  /// By the identifier where there is one that the list has, else by the names.
  std::optional<std::size_t> Find(const Entry& entry) {
    std::optional<std::size_t> found = m_identities.Find(entry.id, m_taken);
    if (!found) found = m_triplets.Find(entry.triplet, m_taken);
    if (!found) found = m_shown.Find(entry.title, m_taken);
    if (!found) found = m_broadcast.Find(entry.name, m_taken);
    if (!found) found = m_broadcast.Find(entry.title, m_taken);
    return found;
  }

  const std::vector<Channel>& m_current;
  Losses& m_losses;
  std::vector<bool> m_taken;
  Directory m_identities;
  Directory m_triplets;
  Directory m_shown;
  Directory m_broadcast;
  std::vector<Named> m_order;
  bool m_marks = false;  ///< the file has favourites
};

}  // namespace

ImportResult Read(const Input& input, const ImportRequest& request, Losses& losses) {
  ImportResult result;
  result.isWhole = true;
  Orderer orderer(request, losses);
  EntryLines entries(input.bytes, losses);
  while (const std::optional<Entry> entry = entries.Next()) {
    ++result.read;
    orderer.Take(*entry);
  }
  if (!entries.IsKnown()) throw Failure{E_INVALIDARG, "the file is no playlist"};
  result.channels = orderer.Ordered();
  return result;
}

}  // namespace zortunedex::kit::interchange::m3u
