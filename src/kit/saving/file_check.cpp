#include "kit/saving/file_check.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/files/file_scan.h"
#include "kit/files/scratch_directory.h"
#include "kit/model/channel_layout.h"
#include "kit/saving/stored_form.h"

namespace zortunedex::kit {

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

}  // namespace file_check

}  // namespace zortunedex::kit
