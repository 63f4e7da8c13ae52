#include "kit/interchange/channel_plans.h"

#include <gtest/gtest.h>

namespace zortunedex::kit {

namespace {

using interchange::FrequencyOf;
using interchange::RfChannelOf;
using interchange::TerrestrialBandwidth;

constexpr DWORD kUsa = 1;
constexpr DWORD kHrc = 1001;
constexpr DWORD kIrc = 1002;
constexpr DWORD kJapan = 81;

TEST(ChannelPlans, KnowChannelsOverTheAir) {
  const auto frequency = [](std::uint32_t channel) {
    return FrequencyOf(InputSignalATSCAntenna, kUsa, channel).value_or(0);
  };
  EXPECT_EQ(57'028'615U, frequency(2));
  EXPECT_EQ(69'028'615U, frequency(4));
  EXPECT_EQ(79'028'615U, frequency(5));
  EXPECT_EQ(177'028'615U, frequency(7));
  EXPECT_EQ(473'028'615U, frequency(14));
  EXPECT_EQ(803'028'615U, frequency(69));
  EXPECT_EQ(0U, frequency(0));
  EXPECT_EQ(0U, frequency(1));
  EXPECT_EQ(0U, frequency(70));
}

TEST(ChannelPlans, KnowThreePlansOfCable) {
  const auto frequency = [](DWORD country, std::uint32_t channel) {
    return FrequencyOf(InputSignalATSCCable, country, channel).value_or(0);
  };
  EXPECT_EQ(57'000'000U, frequency(kUsa, 2));
  EXPECT_EQ(79'000'000U, frequency(kUsa, 5));
  EXPECT_EQ(123'000'000U, frequency(kUsa, 14));
  EXPECT_EQ(219'000'000U, frequency(kUsa, 23));
  EXPECT_EQ(93'000'000U, frequency(kUsa, 95));
  EXPECT_EQ(999'000'000U, frequency(kUsa, 158));
  EXPECT_EQ(0U, frequency(kUsa, 1));
  EXPECT_EQ(75'000'000U, frequency(kIrc, 1));
  EXPECT_EQ(81'000'000U, frequency(kIrc, 5));
  EXPECT_EQ(219'000'000U, frequency(kIrc, 23));
  EXPECT_EQ(73'753'600U, frequency(kHrc, 1));
  EXPECT_EQ(55'752'700U, frequency(kHrc, 2));
  EXPECT_EQ(175'758'700U, frequency(kHrc, 7));
  EXPECT_EQ(121'756'000U, frequency(kHrc, 14));
  EXPECT_EQ(649'782'400U, frequency(kHrc, 100));
}

TEST(ChannelPlans, KnowOneSegment) {
  const auto frequency = [](std::uint32_t channel) {
    return FrequencyOf(InputSignalISDBTerrestrialOneSeg, kJapan, channel).value_or(0);
  };
  EXPECT_EQ(473'142'857U, frequency(13));
  EXPECT_EQ(557'142'857U, frequency(27));  // 557143 kHz, as the samples have it
  EXPECT_EQ(0U, frequency(12));
}

TEST(ChannelPlans, KnowNoOthers) {
  EXPECT_FALSE(FrequencyOf(InputSignalDVBTerrestrial, 49, 21));
  EXPECT_FALSE(RfChannelOf(InputSignalDVBTerrestrial, 49, 474'000'000));
}

TEST(ChannelPlans, FindTheChannelOfAFrequency) {
  for (const InputSignalType signal : {InputSignalATSCAntenna, InputSignalATSCCable}) {
    for (const DWORD country : {kUsa, kHrc, kIrc}) {
      for (std::uint32_t channel = 0; channel < 200; ++channel) {
        const auto frequency = FrequencyOf(signal, country, channel);
        if (!frequency) continue;
        EXPECT_EQ(channel, RfChannelOf(signal, country, *frequency)) << country;
        EXPECT_EQ(channel, RfChannelOf(signal, country, *frequency - 500'000)) << country;
        EXPECT_NE(channel, RfChannelOf(signal, country, *frequency + 500'001)) << country;
      }
    }
  }
}

TEST(ChannelPlans, KnowTheBandwidthOfCountries) {
  EXPECT_EQ(8U, TerrestrialBandwidth(49, 474'000));
  EXPECT_EQ(7U, TerrestrialBandwidth(49, 191'500));
  EXPECT_EQ(7U, TerrestrialBandwidth(49, 299'999));
  EXPECT_EQ(8U, TerrestrialBandwidth(49, 300'000));
  EXPECT_EQ(7U, TerrestrialBandwidth(61, 571'500));
  EXPECT_EQ(6U, TerrestrialBandwidth(886, 557'000));
  EXPECT_EQ(6U, TerrestrialBandwidth(57, 473'000));
  EXPECT_EQ(6U, TerrestrialBandwidth(1, 177'000));
  EXPECT_EQ(8U, TerrestrialBandwidth(91, 191'500));
  EXPECT_EQ(8U, TerrestrialBandwidth(7, 191'500));
}

}  // namespace

}  // namespace zortunedex::kit
