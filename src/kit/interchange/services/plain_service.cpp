#include "kit/interchange/services/plain_service.h"

#include "kit/interchange/services/channel_builder.h"
#include "kit/interchange/services/service_channel.h"
#include "kit/interchange/services/station_values.h"
#include "kit/model/channel_layout.h"

namespace zortunedex::kit::interchange {

Service FromChannelWithoutLanguages(const Channel& channel, const ExportRequest& request,
                                    Losses& losses) {
  Losses all;
  Service service = FromChannel(channel, request, all);
  for (const Loss& loss : all.All()) {
    if (loss.code == Code::LanguageAssumed) continue;
    losses.Add(loss.code, loss.field, loss.place, loss.value, loss.became);
  }
  return service;
}

void AssumeServiceType(const Place& place, Service& service, Losses& losses) {
  const station_blocks::Layout& layout = LayoutOf(service.delivery);
  if (FindAttribute(layout, "serviceType") == nullptr) return;
  const bool hasVideo = !service.Of(StreamKind::Video).empty();
  if (!hasVideo && service.Of(StreamKind::Audio).empty()) return;
  const bool isAtsc = FindAttribute(layout, "majorChannel") != nullptr;
  service.serviceType = (hasVideo ? 1 : 2) + (isAtsc ? 1 : 0);
  losses.Add(Code::TypeAssumed, "serviceType", place, {}, std::int64_t{service.serviceType});
}

std::string PlainText(std::string_view text) {
  std::string plain = utf::FromWide(ToWideAnyhow(text));
  for (char& letter : plain) {
    const auto byte = static_cast<unsigned char>(letter);
    if (byte < 0x20 || byte == 0x7F) letter = ' ';
  }
  return plain;
}

std::string Excerpt(std::string_view line) {
  constexpr std::size_t kMost = 120;
  if (line.size() <= kMost) return PlainText(line);
  return PlainText(line.substr(0, kMost)) + "...";
}

}  // namespace zortunedex::kit::interchange
