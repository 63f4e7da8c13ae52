// Any bytes as settings of Enigma2: as a file of services, and, taken apart at 0xff, as a folder.
#include "support/exchange.h"

using namespace zortunedex::kit;

namespace {

constexpr const char* kFiles[] = {"lamedb", "bouquets.tv", "userbouquet.a.tv",
                                  "userbouquet.favourites.tv"};

void ReadFolder(const interchange::Format& format, const ExchangedList& list,
                std::string_view bytes) {
  std::map<std::string, std::string> files;
  interchange::Input input;
  input.isFolder = true;
  for (const char* name : kFiles) {
    const std::size_t end = std::min(bytes.find('\xFF'), bytes.size());
    files[name] = bytes.substr(0, end);
    input.names.emplace_back(name);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  input.read = [&files](const std::string& name) -> std::optional<std::string> {
    const auto found = files.find(name);
    return found == files.end() ? std::nullopt : std::optional(found->second);
  };
  const std::vector<Channel> none;
  try {
    interchange::ImportChannels(format, input, {list.Context(), none}, interchange::Into::Empty);
  } catch (const Failure&) {
    // Nothing of the kind.
  }
}

}  // namespace

void Fuzz(const BYTE* data, std::size_t size) {
  if (size == 0) return;
  FuzzReader("enigma2", false, data, size);
  const interchange::Format& format = *interchange::FindFormat("enigma2");
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  ReadFolder(format, ExchangedList::Of(format, data[0]), bytes.substr(1));
}
