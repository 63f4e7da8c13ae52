#include "channels/stations/service_type.h"

#include <map>

#include "channels/channel_records.h"

namespace {

struct Expected {
  InputSignalType signalType;
  std::map<std::uint32_t, EServiceType> codes;
};

const Expected kAtsc = {InputSignalATSCAntenna,
                        {{1, ServiceAnalogTV},
                         {2, ServiceDigitalTV},
                         {3, ServiceDigitalAudio},
                         {4, ServiceDataBroadcast}}};
const Expected kDvb = {InputSignalDVBSatellite,
                       {{1, ServiceDigitalTV},
                        {17, ServiceDigitalTV},
                        {22, ServiceDigitalTV},
                        {25, ServiceDigitalTV},
                        {154, ServiceDigitalTV},
                        {2, ServiceDigitalRadio},
                        {10, ServiceDigitalRadio},
                        {12, ServiceDataBroadcast},
                        {16, ServiceDataBroadcast}}};
const Expected kTdmb = {InputSignalTDMBMobile, {{1, ServiceDigitalTV}, {2, ServiceDigitalAudio}}};

void ExpectCodes(const Expected& expected, InputSignalType signalType) {
  std::vector<std::uint32_t> codes = {0x7FFFFFFF, 0x80000001, 0xFFFFFFFF, 0x101, 0x10001};
  for (std::uint32_t code = 0; code <= 300; ++code) codes.push_back(code);
  for (const std::uint32_t code : codes) {
    const auto known = expected.codes.find(code);
    EServiceType serviceType = ServiceUnknown;
    ExpectHr(S_OK, service_type::FromCode(signalType, code, serviceType));
    EXPECT_EQ(known == expected.codes.end() ? ServiceOthers : known->second, serviceType)
        << signalType << " code " << code;
  }
  EServiceType serviceType = ServiceDigitalRadio;
  ExpectHr(E_FAIL, service_type::FromCode(signalType, std::nullopt, serviceType));
  EXPECT_EQ(ServiceDigitalRadio, serviceType);
}

TEST(ServiceType, AtscCodes) {
  ExpectCodes(kAtsc, InputSignalATSCAntenna);
  ExpectCodes(kAtsc, InputSignalATSCCable);
}

TEST(ServiceType, DvbCodes) {
  ExpectCodes(kDvb, InputSignalDVBCable);
  ExpectCodes(kDvb, InputSignalDVBSatellite);
  ExpectCodes(kDvb, InputSignalDVBTerrestrial);
}

TEST(ServiceType, TdmbCodes) { ExpectCodes(kTdmb, InputSignalTDMBMobile); }

TEST(ServiceType, AnalogAndFmMatchEverything) {
  for (const InputSignalType signalType :
       {InputSignalAnalogAntenna, InputSignalAnalogCable, InputSignalFMRadio}) {
    EServiceType serviceType = ServiceUnknown;
    ExpectHr(S_OK, service_type::FromCode(signalType, std::nullopt, serviceType));
    EXPECT_EQ(ServiceAll, serviceType);
  }
}

TEST(ServiceType, DvbHandheldFails) {
  EServiceType serviceType = ServiceDigitalRadio;
  ExpectHr(E_FAIL, service_type::FromCode(InputSignalDVBHandheld, 1, serviceType));
  EXPECT_EQ(ServiceDigitalRadio, serviceType);
}

TEST(ServiceType, TypesThatNameNoServiceLeaveTheValue) {
  for (const int signalType : {-5, 0, 3, 4, 6, 7, 63, 112, 128, 144, 176, 177, 1000}) {
    EServiceType serviceType = ServiceDigitalRadio;
    ExpectHr(S_OK,
             service_type::FromCode(static_cast<InputSignalType>(signalType), 1, serviceType));
    EXPECT_EQ(ServiceDigitalRadio, serviceType) << signalType;
  }
}

TEST(ServiceType, RecordReadsTheFirstWordOfItsBlock) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalDVBSatellite);
  EServiceType serviceType = ServiceDataBroadcast;
  ExpectHr(E_FAIL, record->GetServiceType(&serviceType));
  EXPECT_EQ(ServiceDataBroadcast, serviceType);
  Station station(InputSignalDVBSatellite);
  station.Word(0, 154).Word(4, 2);
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  ExpectHr(S_OK, record->GetServiceType(&serviceType));
  EXPECT_EQ(ServiceDigitalTV, serviceType);
  // DVB cable reads a block that came with another type.
  record->SetSignalType(InputSignalDVBCable);
  serviceType = ServiceUnknown;
  ExpectHr(S_OK, record->GetServiceType(&serviceType));
  EXPECT_EQ(ServiceDigitalTV, serviceType);
}

TEST(ServiceType, DvbCableRecordHasNoBlockOfItsOwn) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalDVBCable);
  Station station(InputSignalDVBSatellite);
  station.Word(0, 1);
  for (int stations = 0; stations < 2; ++stations) {
    EServiceType serviceType = ServiceDataBroadcast;
    ExpectHr(E_FAIL, record->GetServiceType(&serviceType));
    EXPECT_EQ(ServiceDataBroadcast, serviceType);
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  }
}

TEST(ServiceType, OneSegmentRecordLeavesTheCallersValue) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalISDBTerrestrialOneSeg);
  Station station(InputSignalISDBTerrestrialOneSeg);
  station.Word(0, 1);
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  EServiceType serviceType = ServiceDataBroadcast;
  ExpectHr(S_OK, record->GetServiceType(&serviceType));
  EXPECT_EQ(ServiceDataBroadcast, serviceType);
}

}  // namespace
