#include <algorithm>
#include <unordered_map>

#include "kit/history/comparison/channel_changes.h"

namespace zortunedex::kit::history {
namespace {

using station_blocks::Source;

void Append(std::string& key, std::uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8) key += static_cast<char>(value >> shift & 0xFF);
}

void Append(std::string& key, const WideText& text) {
  Append(key, static_cast<std::uint32_t>(text.size()));
  for (const auto unit : text) Append(key, static_cast<std::uint32_t>(unit));
}

/// What tells a station from others: where it is, and its block but for the name in it.
std::string StationOf(const Channel& channel, InputSignalType signal) {
  std::string key;
  for (const Source source : {Source::PhysicalChannel, Source::Frequency, Source::OffsetFrequency,
                              Source::TransportStream}) {
    Append(key, SourceValue(channel, source));
  }
  const std::size_t start = key.size();
  key.append(channel.block.begin(), channel.block.end());
  const station_blocks::Layout* layout = station_blocks::Find(signal);
  if (layout == nullptr || channel.block.size() < layout->size) return key;
  for (const station_blocks::Field& field : layout->channel) {
    if (field.source != Source::Name) continue;
    std::fill_n(key.begin() + static_cast<std::ptrdiff_t>(start + field.offset), field.width, '\0');
  }
  return key;
}

std::string NamesOf(const Channel& channel, InputSignalType) {
  std::string key;
  if (channel.name.empty() && channel.displayName.empty()) return key;
  Append(key, channel.name);
  Append(key, channel.displayName);
  return key;
}

std::string EverythingOf(const Channel& channel, InputSignalType) {
  std::string key;
  for (const Source source : {Source::PhysicalChannel, Source::Frequency, Source::OffsetFrequency,
                              Source::TransportStream, Source::Favorite, Source::Lock}) {
    Append(key, SourceValue(channel, source));
  }
  Append(key, channel.name);
  Append(key, channel.displayName);
  key.append(channel.block.begin(), channel.block.end());
  return key;
}

std::string IndexOf(const Channel& channel, InputSignalType) {
  std::string key;
  Append(key, channel.index);
  return key;
}

using KeyOf = std::string (*)(const Channel& channel, InputSignalType signal);

/// Pairs what is left by a key, the first with the first. Empty keys fit nothing.
void Pair(const std::vector<Channel>& from, const std::vector<Channel>& to, InputSignalType signal,
          KeyOf keyOf, std::vector<bool>& isTaken, std::vector<int>& origins) {
  std::unordered_map<std::string, std::vector<std::size_t>> places;
  for (std::size_t i = from.size(); i-- > 0;) {
    if (!isTaken[i]) places[keyOf(from[i], signal)].push_back(i);
  }
  for (std::size_t i = 0; i < to.size() && !places.empty(); ++i) {
    if (origins[i] >= 0) continue;
    const std::string key = keyOf(to[i], signal);
    const auto found = places.find(key);
    if (key.empty() || found == places.end() || found->second.empty()) continue;
    origins[i] = static_cast<int>(found->second.back());
    isTaken[found->second.back()] = true;
    found->second.pop_back();
  }
}

std::vector<int> OriginsBy(std::initializer_list<KeyOf> keys, const std::vector<Channel>& from,
                           const std::vector<Channel>& to, InputSignalType signal) {
  std::vector<int> origins(to.size(), -1);
  std::vector<bool> isTaken(from.size(), false);
  // What stayed where it was is not looked for among others like it.
  for (std::size_t i = 0; i < std::min(from.size(), to.size()); ++i) {
    if (FirstDifference(from[i], to[i], nullptr) != nullptr) continue;
    origins[i] = static_cast<int>(i);
    isTaken[i] = true;
  }
  for (const KeyOf keyOf : keys) Pair(from, to, signal, keyOf, isTaken, origins);
  return origins;
}

}  // namespace

std::vector<int> Origins(const std::vector<Channel>& from, const std::vector<Channel>& to,
                         InputSignalType signal) {
  return OriginsBy({EverythingOf, StationOf, NamesOf, IndexOf}, from, to, signal);
}

bool KeepTheirPlaces(const std::vector<Channel>& from, const std::vector<Channel>& to,
                     InputSignalType signal) {
  const std::vector<int> origins = OriginsBy({EverythingOf, StationOf, NamesOf}, from, to, signal);
  for (std::size_t i = 0; i < origins.size(); ++i) {
    if (origins[i] != static_cast<int>(i)) return false;
  }
  return true;
}

std::vector<bool> OutOfOrder(const std::vector<int>& places) {
  constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  std::vector<bool> isOut(places.size(), false);
  // Ends of the best rows by their length, and what stands before each in its row.
  std::vector<std::size_t> ends;
  std::vector<std::size_t> before(places.size(), kNone);
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (places[i] < 0) continue;
    isOut[i] = true;
    const auto end =
        std::lower_bound(ends.begin(), ends.end(), places[i],
                         [&places](std::size_t row, int place) { return places[row] < place; });
    if (end != ends.begin()) before[i] = *(end - 1);
    end == ends.end() ? ends.push_back(i) : void(*end = i);
  }
  for (std::size_t i = ends.empty() ? kNone : ends.back(); i != kNone; i = before[i]) {
    isOut[i] = false;
  }
  return isOut;
}

}  // namespace zortunedex::kit::history
