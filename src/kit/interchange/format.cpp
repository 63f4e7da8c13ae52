#include "kit/interchange/format.h"

#include <algorithm>

#include "kit/failure.h"

namespace zortunedex::kit::interchange {

void ImportResult::Add(ImportedChannel channel, const ImportRequest& request) {
  if (channels.size() >= request.mostChannels) {
    throw Failure{E_INVALIDARG,
                  "the file has more than " + std::to_string(request.mostChannels) + " channels"};
  }
  channels.push_back(std::move(channel));
}

Input InputOf(const Format& format, const Output& output) {
  Input input;
  input.isFolder = format.isFolder;
  if (!format.isFolder) {
    if (!output.files.empty()) input.bytes = output.files.front().bytes;
    return input;
  }
  for (const OutputFile& file : output.files) input.names.push_back(file.name);
  input.read = [&output](const std::string& name) -> std::optional<std::string> {
    const auto found = std::ranges::find(output.files, name, &OutputFile::name);
    return found == output.files.end() ? std::nullopt : std::optional(found->bytes);
  };
  return input;
}

void FillIndexes(std::vector<ImportedChannel>& channels) {
  UINT last = 0;
  for (ImportedChannel& imported : channels) {
    UINT& index = imported.channel.index;
    if (index == 0 && last != UINT32_MAX) index = last + 1;
    last = index;
  }
}

bool Holds(std::span<const InputSignalType> signals, InputSignalType signal) {
  return std::ranges::find(signals, signal) != signals.end();
}

}  // namespace zortunedex::kit::interchange
