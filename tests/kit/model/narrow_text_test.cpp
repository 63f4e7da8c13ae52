#include "kit/model/narrow_text.h"

#include "kit/home.h"
#include "kit/model/channel.h"

namespace zortunedex::kit {

namespace {

class NarrowTexts : public testing::Test {
 protected:
  /// As a record of the library answers.
  WideText Asked(std::string_view narrow) const {
    ComPtr<IChannelInfo> record;
    EXPECT_EQ(S_OK, m_database.List()->CreateChannelInfo(record.Receive()));
    Channel channel;
    channel.block.resize(station_blocks::kDvbs.size);
    std::copy(narrow.begin(), narrow.end(), channel.block.begin() + 608);
    WriteChannel(channel, InputSignalDVBSatellite, record.Get());
    Bstr text;
    EXPECT_EQ(S_OK, record->GetChannelName(text.Receive()));
    return WideText(text.View());
  }

  Home m_home{Home::Start::Empty};
  Database m_database{m_home.At(49, InputSignalDVBSatellite)};
  NarrowText m_narrow{m_database};
};

TEST_F(NarrowTexts, AreThoseOfTheLibrary) {
  for (int byte = 1; byte < 0x100; ++byte) {
    for (const std::string& text : {std::string(1, static_cast<char>(byte)),
                                    std::string("a") + static_cast<char>(byte) + "\\~z"}) {
      EXPECT_EQ(Asked(text), m_narrow.ToWide(text)) << byte;
    }
    if (byte >= 0x80) continue;
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(text, m_narrow.FromWide(m_narrow.ToWide(text)));
  }
  EXPECT_EQ(WideText(), m_narrow.ToWide(""));
  EXPECT_EQ(std::string(), m_narrow.FromWide(WideText()));
}

TEST_F(NarrowTexts, EndAtTheLimit) {
  const std::string longest(NarrowText::kLimit, 'n');
  const WideText wide(NarrowText::kLimit, OLECHAR{'n'});
  EXPECT_EQ(wide, m_narrow.ToWide(longest + "n"));
  EXPECT_EQ(longest, m_narrow.FromWide(wide + OLECHAR{'n'}));
}

TEST_F(NarrowTexts, HaveNoZeros) {
  EXPECT_EQ(std::nullopt, m_narrow.FromWide(WideText(1, OLECHAR{0})));
  EXPECT_EQ(WideText(1, OLECHAR{'a'}), m_narrow.ToWide(std::string_view("a\0b", 3)));
}

}  // namespace

}  // namespace zortunedex::kit
