#include "kit/interchange/list/exporting.h"

#include "kit/failure.h"
#include "kit/interchange/list/comparison.h"
#include "kit/model/channel_layout.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit::interchange {

std::vector<Channel> ReadBack(const Format& format, const Output& output,
                              const ExportRequest& request) {
  if (format.readBack != nullptr) return format.readBack(output, request);
  // A file without a channel may be nothing that a reader takes.
  if (output.written.empty()) return {};
  const std::vector<Channel> none;
  ImportRequest all{request.context, none};
  all.mostChannels = request.channels.size();
  Losses ignored;
  ImportResult result = format.read(InputOf(format, output), all, ignored);
  FillIndexes(result.channels);
  std::vector<Channel> channels;
  for (ImportedChannel& imported : result.channels) channels.push_back(std::move(imported.channel));
  return channels;
}

Export ExportChannels(const Format& format, const ExportRequest& request) {
  if (!Holds(format.out, request.context.signal)) {
    throw Failure{E_NOTIMPL, std::string("the format ") + format.name + " has no form for " +
                                 SignalTypeName(request.context.signal)};
  }
  const std::size_t size = LayoutOf(request.context.signal).size;
  for (const Channel& channel : request.channels) {
    if (channel.block.size() >= size) continue;
    throw InvalidArgument{"a channel has not the station block of " +
                          SignalTypeName(request.context.signal)};
  }
  Export result;
  format.write(request, result.output, result.losses);
  const std::vector<Channel> became = ReadBack(format, result.output, request);
  if (became.size() != result.output.written.size()) {
    throw Failure{E_UNEXPECTED, std::to_string(result.output.written.size()) +
                                    " channels were written and " + std::to_string(became.size()) +
                                    " read back"};
  }
  for (std::size_t i = 0; i < became.size(); ++i) {
    AddDifferences(request.channels[result.output.written[i]], became[i],
                   {request.context, request.names, format.codes}, result.losses);
  }
  return result;
}

}  // namespace zortunedex::kit::interchange
