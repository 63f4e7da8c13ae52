// Texts and bytes of the sample presets, where the code page is UTF-8.
//
// Linux only: only there does the process choose its code page
#include <gtest/gtest.h>

#include "platform/text.h"
#include "xml/preset_file.h"

namespace {

std::string ChannelName(const ComPtr<IChannelInfoMgr>& list, UINT index, bool display) {
  ComPtr<IChannelInfo> channel;
  ExpectHr(S_OK, list->GetChannelInfoByIndex(index, channel.Receive()));
  Bstr name;
  ExpectHr(S_OK, display ? channel->GetChannelDspName(name.Receive())
                         : channel->GetChannelName(name.Receive()));
  return text::ToUtf8(name.View());
}

}  // namespace

TEST(SamplePresetTexts, AreJapanese) {
  PresetFile file(SamplePresets());
  EXPECT_EQ("北海道", file.AreaName(0));
  EXPECT_EQ("関東", file.AreaName(2));
  EXPECT_EQ("九州・沖縄", file.AreaName(7));
  EXPECT_EQ("東京都", file.SubAreaName(2, 5));
  EXPECT_EQ("大阪府", file.SubAreaName(4, 3));
  EXPECT_EQ("愛知県", file.SubAreaName(3, 8));
  EXPECT_EQ("沖縄県", file.SubAreaName(7, 7));
  EXPECT_EQ("自宅", file.SubAreaName(8, 0));
  const ComPtr<IChannelInfoMgr> fukuoka = file.List(7, 0);
  EXPECT_EQ("ＮＨＫ総合・福岡", ChannelName(fukuoka, 1, false));
  EXPECT_EQ("NHK総合", ChannelName(fukuoka, 1, true));
  EXPECT_EQ("ＴＮＣテレビ西日本", ChannelName(fukuoka, 7, false));
}

// What is not changed is written as it was read.
TEST(SamplePresetTexts, AreKeptBySaving) {
  const std::string bytes = SamplePresets();
  PresetFile file(bytes);
  ExpectHr(S_OK, file->DeleteCustomerChannelList(0));
  const std::size_t customer = bytes.find("<SubArea SubAreaIndex=\"0\" name=\"自宅\">");
  ASSERT_NE(std::string::npos, customer);
  const std::size_t end = bytes.find_last_not_of("\r\n\t", customer - 1) + 1;
  EXPECT_EQ(bytes.substr(0, end - 1), file.Saved().substr(0, end - 1));
}
