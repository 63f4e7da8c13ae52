#include "kit/interchange/services/plain_service.h"

#include "kit/interchange/services/channel_builder.h"
#include "kit/interchange/services/service_channel.h"

namespace interchange {

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

}  // namespace interchange
