// Texts of the sample presets, where the code page is UTF-8.
#include <gtest/gtest.h>

#include "platform/text.h"
#include "support/code_page.h"
#include "xml/files/preset_file.h"

namespace {

std::string ChannelName(const ComPtr<IChannelInfoMgr>& list, UINT index, bool display) {
  ComPtr<IChannelInfo> channel;
  ExpectHr(S_OK, list->GetChannelInfoByIndex(index, channel.Receive()));
  Bstr name;
  ExpectHr(S_OK, display ? channel->GetChannelDspName(name.Receive())
                         : channel->GetChannelName(name.Receive()));
  return text::ToUtf8(name.View());
}

class SamplePresetTexts65001 : public InCodePage<65001> {};

}  // namespace

TEST_F(SamplePresetTexts65001, AreJapanese) {
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
