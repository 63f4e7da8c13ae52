// The words of signal types, services, satellites and tuning parameters.
#include <gtest/gtest.h>

#include "kit/failure.h"
#include "kit/text/satellite_words.h"
#include "kit/text/signal_types.h"
#include "kit/text/tuning_words.h"

namespace zortunedex::kit {

namespace {

using station_blocks::Form;

TEST(SignalTypes, AreReadAsTheyAreNamed) {
  for (const InputSignalType type : StorableSignalTypes()) {
    EXPECT_EQ(type, ParseSignalType(SignalTypeName(type)));
    EXPECT_EQ(type, ParseSignalType("inputsignal" + SignalTypeName(type)));
    EXPECT_EQ(type, ParseSignalType(std::to_string(type)));
    EXPECT_NE(nullptr, station_blocks::Find(type));
  }
  EXPECT_EQ(10U, StorableSignalTypes().size());
  EXPECT_EQ(std::nullopt, ParseSignalType("DVBSatellit"));
  EXPECT_EQ(std::nullopt, ParseSignalType("65"));
  EXPECT_EQ("65", SignalTypeName(static_cast<InputSignalType>(65)));
}

TEST(SignalTypes, KnowTheServicesOfAMask) {
  EXPECT_EQ(3U, ParseServiceMask("TV"));
  EXPECT_EQ(12U, ParseServiceMask("radio"));
  EXPECT_EQ(0xFFFFFFFFU, ParseServiceMask("all"));
  EXPECT_EQ(0xFFFFFFFFU, ParseServiceMask("-1"));
  EXPECT_EQ(std::nullopt, ParseServiceMask("television"));
  EXPECT_EQ("DigitalTV", ServiceTypeName(ServiceDigitalTV));
  EXPECT_EQ("-", ServiceTypeName(ServiceUnknown));
  EXPECT_EQ("3", ServiceTypeName(static_cast<EServiceType>(3)));
}

TEST(TuningWords, StandForTheValuesThatTheFileGivesBack) {
  for (const Form form :
       {Form::Polarisation, Form::FecRate, Form::Modulation, Form::SpectralInversion}) {
    ASSERT_FALSE(tuning_words::Of(form).empty());
    for (const tuning_words::Word& word : tuning_words::Of(form)) {
      EXPECT_EQ(word.value, tuning_words::Value(form, word.text));
      EXPECT_STREQ(word.text, tuning_words::Text(form, word.value));
      EXPECT_EQ(word.value, tuning_words::AsRead(form, word.value));
    }
    EXPECT_STREQ("NotSet", tuning_words::Text(form, 0));
    EXPECT_EQ(-1, tuning_words::AsRead(form, 0));
    EXPECT_EQ(nullptr, tuning_words::Text(form, 99));
    EXPECT_EQ(0, tuning_words::AsRead(form, 99));
  }
  EXPECT_EQ("NotSet, automatic, normal or inverted",
            tuning_words::Choices(Form::SpectralInversion));
  EXPECT_TRUE(tuning_words::Of(Form::Number).empty());
}

TEST(SatelliteWords, NameRegionsBandsAndPositions) {
  EXPECT_EQ(RegionAtlantic, ParseRegion("atlantic"));
  EXPECT_EQ(std::nullopt, ParseRegion("Africa"));
  EXPECT_EQ("Unknown", RegionName(static_cast<ESatRegion>(77)));
  EXPECT_EQ(SatFreqBand_KuBand, ParseBand("KU"));
  EXPECT_EQ(SatFreqBand_CBand, ParseBand("C-Band"));
  EXPECT_EQ(std::nullopt, ParseBand("Ka"));
  EXPECT_EQ("19.2E", PositionText(192));
  EXPECT_EQ("30.0W", PositionText(-300));
  EXPECT_EQ("0.8W", PositionText(-8));
  EXPECT_EQ("214748364.8W", PositionText(INT32_MIN));
}

TEST(Failures, NameTheirResults) {
  EXPECT_EQ("E_FAIL (0x80004005)", ResultText(E_FAIL));
  EXPECT_EQ("0x8007FFFF", ResultText(static_cast<HRESULT>(0x8007FFFF)));
  EXPECT_NO_THROW(Require(S_FALSE, "a success"));
  try {
    Require(E_ACCESSDENIED, "no way");
    ADD_FAILURE() << "nothing was raised";
  } catch (const Failure& failure) {
    EXPECT_EQ(E_ACCESSDENIED, failure.Result());
    EXPECT_STREQ("no way", failure.what());
  }
}

}  // namespace

}  // namespace zortunedex::kit
