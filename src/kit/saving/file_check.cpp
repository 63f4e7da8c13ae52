#include "kit/saving/file_check.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "kit/files/file_scan.h"
#include "kit/files/scratch_directory.h"
#include "kit/model/channel_list.h"
#include "kit/model/failure.h"
#include "kit/saving/field_values.h"
#include "kit/saving/stored_form.h"
#include "kit/text/signal_types.h"

using file_scan::Attribute;
using file_scan::Tag;
using station_blocks::Layout;

namespace file_check {
namespace {

/// Attributes that a save of the list writes afresh.
bool IsRewritten(const Layout& layout, const Tag& tag, std::string_view attribute) {
  if (tag.name == "Channel") return FindField(layout.channel, attribute) != nullptr;
  return tag.name == "ElementStreams" || FindField(layout.satelliteParams, attribute) != nullptr;
}

/// Goes through the tags and knows which set they stand in.
class Checker {
 public:
  explicit Checker(const Location* rewritten) : m_rewritten(rewritten) {}

  void Take(const Tag& tag) {
    if (tag.closing) return;
    if (tag.name == "Country") m_country = tag.Number("countrycode");
    if (tag.name == "Country" || tag.name == "ChannelSet") {
      m_signal = static_cast<InputSignalType>(tag.Number("inputSignalType"));
    }
    const bool isChannel = tag.name != "Country" && tag.name != "ChannelSet";
    const bool own = m_rewritten != nullptr && isChannel && m_country == m_rewritten->country &&
                     m_signal == m_rewritten->signal;
    for (const Attribute& attribute : tag.attributes) {
      if (own && IsRewritten(LayoutOf(m_signal), tag, attribute.name)) continue;
      RequireWritable(tag, attribute);
    }
  }

 private:
  void RequireWritable(const Tag& tag, const Attribute& attribute) const {
    const std::optional<WideText> value = utf::ToWide(attribute.value);
    // Values in other encodings are told apart by their ASCII characters alone.
    const auto character =
        Unwritable(value ? *value : WideText(attribute.value.begin(), attribute.value.end()), true);
    if (!character) return;
    throw Failure{E_INVALIDARG, std::string(attribute.name) + " of a " + std::string(tag.name) +
                                    " of country " + std::to_string(m_country) + " holds " +
                                    *character + ", which the pre-formatted form cannot keep"};
  }

  const Location* m_rewritten;
  DWORD m_country = 0;
  InputSignalType m_signal = InputSignalUnknown;
};

void Check(const std::string& directory, const Location* rewritten) {
  Checker checker(rewritten);
  const std::string xml = file_scan::ReadWhole(file_scan::ChannelFile(directory));
  file_scan::ForEachTag(xml, [&checker](const Tag& tag) { checker.Take(tag); });
}

std::size_t CountUnreadable(const std::string& directory, const std::string& file) {
  const std::u8string start(file.begin(), file.end());
  std::size_t count = 0;
  std::error_code error;
  const std::filesystem::path path = file_scan::ChannelFile(directory).parent_path();
  for (auto entry = std::filesystem::directory_iterator(path, error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::u8string name = entry->path().filename().u8string();
    count += name.starts_with(start + u8".unreadable");
  }
  return count;
}

}  // namespace

void RequirePreFormattable(const Location& location) {
  Check(location.directory, &location);
  const file_scan::Contents contents = file_scan::Scan(location.directory);
  const bool known =
      std::any_of(contents.countries.begin(), contents.countries.end(),
                  [&](const auto& country) { return country.code == location.country; });
  // The name that a new country gets is the library's to know.
  if (!known) RequirePreFormattable(ScratchDirectory(location.country).Path());
}

void RequirePreFormattable(const std::string& directory) { Check(directory, nullptr); }

Inventory TakeInventory(const std::string& directory) {
  // Any country and type will do to see whether the directory is there.
  const Database probe({directory, 1, InputSignalFMRadio});
  const file_scan::Contents contents = file_scan::Scan(directory);
  Inventory inventory;
  std::size_t count = 0;
  for (const file_scan::Country& country : contents.countries) {
    for (const InputSignalType signal : StorableSignalTypes()) {
      if (inventory.contains({country.code, signal})) continue;
      std::vector<Channel> channels = ChannelList({directory, country.code, signal}).Channels();
      count += channels.size();
      const bool inFile = std::any_of(
          contents.sets.begin(), contents.sets.end(),
          [&](const auto& set) { return set.country == country.code && set.signal == signal; });
      if (inFile || !channels.empty()) inventory[{country.code, signal}] = std::move(channels);
    }
  }
  const bool readable = !contents.exists || (contents.table && count != 0) ||
                        (contents.table && contents.ChannelCount() == 0);
  if (!readable) throw Failure{E_FAIL, "ChanInfo.xml cannot be read"};
  return inventory;
}

UnreadableWatch::UnreadableWatch(const std::string& directory, const std::string& file)
    : m_directory(directory), m_file(file), m_before(CountUnreadable(directory, file)) {}

bool UnreadableWatch::PutAside() const { return CountUnreadable(m_directory, m_file) != m_before; }

void UnreadableWatch::Report() const {
  if (!PutAside()) return;
  std::cerr << "tunedex: the old " << m_file
            << " could not be read and was kept beside the new one\n";
}

}  // namespace file_check
