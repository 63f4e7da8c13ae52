#include "kit/interchange/m3u/m3u_writer.h"

#include <algorithm>

#include "kit/interchange/m3u/m3u_address.h"
#include "kit/interchange/m3u/m3u_entries.h"
#include "kit/interchange/m3u/m3u_identity.h"
#include "kit/interchange/services/channel_builder.h"
#include "kit/interchange/services/service_channel.h"
#include "kit/interchange/services/station_values.h"
#include "kit/model/channel_layout.h"

namespace zortunedex::kit::interchange::m3u {
namespace {

/// Text of one line.
std::string InLine(std::string text) {
  std::ranges::replace_if(
      text, [](char letter) { return static_cast<unsigned char>(letter) < ' '; }, ' ');
  return text;
}

/// Value of an attribute, in its quotes.
std::string Quoted(std::string text) {
  std::ranges::replace(text, '"', '\'');
  return "\"" + InLine(std::move(text)) + "\"";
}

enum class Kind { Television, Radio, Other };

Kind KindOf(const Channel& channel, InputSignalType signal) {
  constexpr int kRadio = ServiceDigitalAudio | ServiceDigitalRadio;
  constexpr int kTelevision = ServiceAnalogTV | ServiceDigitalTV;
  if (signal == InputSignalFMRadio || signal == InputSignalAMRadio) return Kind::Radio;
  // Records of these name no service type.
  if (signal == InputSignalDVBHandheld || signal == InputSignalISDBTerrestrialOneSeg) {
    return Kind::Television;
  }
  if ((channel.serviceType & kRadio) != 0 && channel.serviceType > 0) return Kind::Radio;
  if ((channel.serviceType & kTelevision) != 0 && channel.serviceType > 0) return Kind::Television;
  return Kind::Other;
}

std::string GroupOf(Kind kind, bool isFavorite) {
  std::string group = kind == Kind::Radio ? "Radio" : kind == Kind::Television ? "TV" : "Other";
  if (isFavorite) group += std::string(";") + kFavorites;
  return group;
}

std::string EntryText(const Channel& channel, const Service& service, const ListContext& context) {
  const Kind kind = KindOf(channel, context.signal);
  std::string text = "#EXTINF:-1 tvg-chno=\"" + std::to_string(channel.index) + "\"";
  if (const std::string identity = IdentityOf(channel, context); !identity.empty()) {
    text += " tvg-id=\"" + identity + "\"";
  }
  text += " tvg-name=" + Quoted(utf::FromWide(channel.name));
  text += " group-title=\"" + GroupOf(kind, channel.favorite != 0) + "\"";
  if (kind == Kind::Radio) text += " radio=\"true\"";
  text += "," + InLine(service.name) + "\n";
  if (service.serviceId != 0) {
    text += "#EXTVLCOPT:program=" + std::to_string(service.serviceId) + "\n";
  }
  return text;
}

}  // namespace

void Write(const ExportRequest& request, Output& output, Losses& losses) {
  RequireAddresses(request);
  std::string& bytes = output.Bytes();
  bytes = "#EXTM3U\n";
  for (std::size_t i = 0; i < request.channels.size(); ++i) {
    const Channel& channel = request.channels[i];
    Losses assumed;
    const Service service = FromChannel(channel, request, assumed);
    const std::string address = AddressOf(channel, service, request);
    if (address.empty()) {
      losses.Add(Code::SignalNotOfTarget, "channel",
                 {channel.index, utf::FromWide(channel.displayName)});
      continue;
    }
    losses.Take(std::move(assumed));
    bytes += EntryText(channel, service, request.context) + address + "\n";
    output.written.push_back(i);
  }
}

std::vector<Channel> ReadBack(const Output& output, const ExportRequest& request) {
  const station_blocks::Layout& layout = LayoutOf(request.context.signal);
  std::vector<Channel> channels;
  Losses ignored;
  ChannelBuilder builder(request.context, ignored);
  EntryLines entries(output.files.front().bytes, ignored);
  while (const std::optional<Entry> entry = entries.Next()) {
    builder.Begin({});
    const auto set = [&](const char* attribute, const FieldValue& value) {
      builder.Set(*FindAttribute(layout, attribute), value);
    };
    set("index", std::int64_t{entry->number});
    set("favor", std::int64_t{entry->isFavorite ? 1 : 0});
    set("name", entry->name);
    if (request.names == Names::Shown && entry->title != entry->name) {
      set("nameDisplay", entry->title);
    }
    channels.push_back(builder.Take());
  }
  return channels;
}

}  // namespace zortunedex::kit::interchange::m3u
