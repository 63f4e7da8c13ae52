#include "kit/model/narrow_text.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "kit/failure.h"
#include "kit/model/channel.h"

namespace zortunedex::kit {

namespace {

// A satellite channel's name has the most room behind it.
constexpr const station_blocks::Layout& kLayout = station_blocks::kDvbs;
constexpr std::size_t kName = station_blocks::OffsetOf(kLayout.channel, "name");
static_assert(kName + NarrowText::kLimit < kLayout.size);

/// No zero, and nothing beyond ASCII: in every code page one byte a character.
template <typename Text>
bool IsPlain(const Text& text) {
  return std::all_of(text.begin(), text.end(), [](auto unit) { return unit > 0 && unit < 0x80; });
}

}  // namespace

std::string_view UpToZero(const BYTE* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  return text.substr(0, text.find('\0'));
}

NarrowText::NarrowText(const Database& database) {
  const ComPtr<IChannelInfoMgr> list = database.List(InputSignalDVBSatellite);
  kit::Require(list->CreateChannelInfo(m_record.Receive()), "a record cannot be made");
  std::string ascii(0x7F, '\0');
  std::iota(ascii.begin(), ascii.end(), '\1');
  const WideText wide(ascii.begin(), ascii.end());
  m_keepsAscii = AskWide(ascii) == wide && AskNarrow(wide) == ascii;
}

void NarrowText::Put(std::string_view narrow) const {
  Channel channel;
  channel.block.resize(kLayout.size);
  const std::size_t length = std::min(narrow.size(), kLimit);
  std::copy_n(narrow.begin(), length, channel.block.begin() + kName);
  WriteChannel(channel, InputSignalDVBSatellite, m_record.Get());
}

WideText NarrowText::ToWide(std::string_view narrow) const {
  if (!m_keepsAscii || !IsPlain(narrow)) return AskWide(narrow);
  narrow = narrow.substr(0, kLimit);
  return WideText(narrow.begin(), narrow.end());
}

std::optional<std::string> NarrowText::FromWide(WideView wide) const {
  if (!m_keepsAscii || !IsPlain(wide)) return AskNarrow(wide);
  wide = wide.substr(0, kLimit);
  std::string narrow(wide.size(), '\0');
  std::transform(wide.begin(), wide.end(), narrow.begin(),
                 [](OLECHAR unit) { return static_cast<char>(unit); });
  return narrow;
}

WideText NarrowText::AskWide(std::string_view narrow) const {
  Put(narrow);
  Bstr text;
  kit::Require(m_record->GetChannelName(text.Receive()), "a text cannot be converted");
  return WideText(text.View());
}

std::optional<std::string> NarrowText::AskNarrow(WideView wide) const {
  if (wide.empty()) return std::string();
  if (wide.find(OLECHAR{0}) != WideView::npos) return std::nullopt;
  Put({});
  const Bstr text(wide);
  kit::Require(m_record->SetChannelName(text.Get()), "a text cannot be converted");
  const Channel channel = ReadChannel(m_record.Get());
  std::string narrow(UpToZero(channel.block.data() + kName, kLimit));
  if (narrow.size() < kLimit && channel.name != wide) return std::nullopt;
  return narrow;
}

std::string NarrowText::Replacing(WideView wide) const {
  if (wide.empty()) return {};
  Put({});
  const Bstr text(wide);
  kit::Require(m_record->SetChannelName(text.Get()), "a text cannot be converted");
  const Channel channel = ReadChannel(m_record.Get());
  return std::string(UpToZero(channel.block.data() + kName, kLimit));
}

std::string NarrowText::Require(WideView wide, std::size_t limit, const std::string& what) const {
  const std::optional<std::string> narrow = FromWide(wide);
  if (!narrow) throw Failure{E_INVALIDARG, what + " holds characters outside the code page"};
  if (narrow->size() > limit) {
    throw Failure{E_INVALIDARG,
                  what + " has more than " + std::to_string(limit) + " bytes in the code page"};
  }
  return *narrow;
}

}  // namespace zortunedex::kit
