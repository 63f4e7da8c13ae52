#include "kit/interchange/list/scan.h"

#include <algorithm>
#include <numeric>

#include "kit/failure.h"
#include "kit/interchange/list/exporting.h"
#include "kit/interchange/list/formats.h"
#include "kit/interchange/list/importing.h"
#include "kit/interchange/services/channel_values.h"
#include "kit/saving/stored_form.h"
#include "kit/text/ascii.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit::interchange {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// The first line that says something: blank lines and comments of configuration files are passed.
std::string_view FirstLine(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    const std::string_view line = bytes.substr(0, end);
    const bool isComment = line.starts_with('#') && !line.starts_with("#EXTM3U");
    if (!isComment && line.find_first_not_of(kBlanks) != std::string_view::npos) return line;
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return {};
}

/// True for the first row of a table: one of its cells is the name of a column of some signal type.
bool NamesColumns(std::string_view line) {
  const char separators[] = {',', ';', '\t'};
  for (const InputSignalType signal : StorableSignalTypes()) {
    for (const Column& column : ColumnsOf(signal)) {
      const std::string_view name = column.name;
      for (const char separator : separators) {
        if (line.starts_with(std::string(name) + separator)) return true;
      }
    }
  }
  return false;
}

const char* NameOfKind(const Input& input) {
  if (input.isFolder) {
    const bool hasServices = std::ranges::any_of(
        input.names, [](const std::string& name) { return name == "lamedb" || name == "lamedb5"; });
    return hasServices ? "enigma2" : "";
  }
  std::string_view bytes = input.bytes;
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  const std::string_view line = FirstLine(bytes);
  if (line.starts_with("eDVB services")) return "enigma2";
  if (line.starts_with("#EXTM3U")) return "m3u";
  if (NamesColumns(line)) return "csv";
  const std::size_t begin = line.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return "";
  if (line[begin] == '{') return "json";
  if (line[begin] == '[') return "dvbv5";
  // A service has twelve colons between its fields, a group begins with one.
  constexpr std::ptrdiff_t kColonsOfService = 12;
  const bool isVdr = line.front() == ':' || std::ranges::count(line, ':') == kColonsOfService;
  return isVdr ? "vdr" : "";
}

}  // namespace

const Format* RecogniseFormat(const Input& input) { return FindFormat(NameOfKind(input)); }

Scan ReadScan(const Format& format, const Input& input, const ImportRequest& request) {
  if (format.readBack != nullptr) {
    throw Failure{E_NOTIMPL, std::string("a file of the format ") + format.name +
                                 " orders the channels of a list, and is no scan"};
  }
  Import made = ImportChannels(format, input, request, Into::Empty);
  const DWORD country = request.context.country;
  if (made.country.value_or(country) != country) {
    throw Failure{E_INVALIDARG, "the file holds channels of country " +
                                    std::to_string(*made.country) + ", not of " +
                                    std::to_string(country)};
  }
  return {std::move(made.table), made.read, std::move(made.losses)};
}

std::vector<Channel> AsToldBy(const Format& format, const Input& file,
                              const ExportRequest& request) {
  const ListContext& context = request.context;
  const ComPtr<IChannelInfoMgr> list = context.database.List(context.signal);
  std::vector<Channel> told = request.channels;
  std::vector<bool> isTold(told.size());
  const auto take = [&](const std::vector<Channel>& channels, std::size_t first) {
    ExportRequest part{context, channels};
    part.names = request.names;
    part.mark = false;
    Output output;
    Losses ignored;
    format.write(part, output, ignored);
    if (format.limit != nullptr) format.limit(file, output);
    const std::vector<Channel> back = ReadBack(format, output, part);
    for (std::size_t i = 0; i < back.size() && i < output.written.size(); ++i) {
      const std::size_t place = first + output.written[i];
      told[place] = AsStored(back[i], context.signal, context.narrow, list.Get());
      isTold[place] = true;
    }
  };
  take(request.channels, 0);
  // A format that leaves out what it has already takes the others one by one.
  for (std::size_t i = 0; i < isTold.size(); ++i) {
    if (!isTold[i]) take({request.channels[i]}, i);
  }
  return told;
}

}  // namespace zortunedex::kit::interchange
