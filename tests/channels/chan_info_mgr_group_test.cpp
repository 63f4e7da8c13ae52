#include "channels/chan_info_mgr_group.h"

#include "channels/channel_records.h"
#include "channels/channel_set.h"

namespace {

constexpr InputSignalType kPositions[] = {
    InputSignalAnalogAntenna, InputSignalAnalogCable,
    InputSignalFMRadio,       InputSignalATSCAntenna,
    InputSignalATSCCable,     InputSignalDVBTerrestrial,
    InputSignalDVBSatellite,  InputSignalDVBCable,
    InputSignalDVBHandheld,   InputSignalISDBTerrestrial,
    InputSignalISDBSatellite, InputSignalISDBCable,
    InputSignalTDMBMobile,    InputSignalISDBTerrestrialOneSeg,
};

using ListPtr = ComPtr<IChannelInfoMgr>;

ListPtr ListOf(const CChanInfoMgrGroup& group, InputSignalType signalType) {
  ListPtr list;
  ExpectHr(S_OK, group.Get(signalType, list.Receive()));
  return list;
}

void AddChannel(IChannelInfoMgr* list, UINT index) {
  ComPtr<IChannelInfo> record;
  ExpectHr(S_OK, list->CreateChannelInfo(record.Receive()));
  InputSignalType signalType = InputSignalUnknown;
  record->GetSignalType(&signalType);
  Station station(signalType);
  record->SetStationInfo(station.Get());
  record->SetChannelIndex(index);
  ExpectHr(S_OK, list->AddChannelInfo(record.Get()));
}

// The values of an attribute over the children of that name.
std::vector<LONG> Values(const dom::Element& parent, const char* path, const char* attribute) {
  dom::ElementList list;
  ExpectHr(S_OK, parent.Select(path, list));
  std::vector<LONG> values;
  for (LONG i = 0; i < list.Count(); ++i) {
    dom::Element element;
    ExpectHr(S_OK, list.Item(i, element));
    std::int32_t value = -7;
    element.GetInt(attribute, value);
    values.push_back(value);
  }
  return values;
}

TEST(ChanInfoMgrGroup, CreateAllMakesFourteenLists) {
  CChanInfoMgrGroup group;
  UINT count = 7;
  ExpectHr(S_OK, group.Count(&count));
  EXPECT_EQ(0u, count);
  ExpectHr(S_OK, group.CreateAll());
  ExpectHr(S_OK, group.Count(&count));
  EXPECT_EQ(14u, count);
  for (UINT position = 0; position < 14; ++position) {
    ListPtr list;
    ExpectHr(S_OK, group.GetByPosition(position, list.Receive()));
    InputSignalType signalType = InputSignalUnknown;
    ExpectHr(S_OK, list->GetSignalType(&signalType));
    EXPECT_EQ(kPositions[position], signalType);
    ListPtr byType;
    ExpectHr(S_OK, group.Get(kPositions[position], byType.Receive()));
    EXPECT_EQ(list.Get(), byType.Get());
    ExpectRefCount(3, list.Get());
    EXPECT_EQ(0, DirtyOf(list.Get()));
  }
}

TEST(ChanInfoMgrGroup, BadArguments) {
  CChanInfoMgrGroup group;
  ListPtr list;
  ExpectHr(E_FAIL, group.GetByPosition(0, list.Receive()));
  ExpectHr(S_OK, group.CreateAll());
  for (const InputSignalType signalType :
       {InputSignalUnknown, InputSignalAnalogComposite, InputSignalAnalogSVideo, InputSignalAMRadio,
        static_cast<InputSignalType>(-1)}) {
    ExpectHr(E_FAIL, group.Get(signalType, list.Receive()));
  }
  ExpectHr(E_INVALIDARG, group.GetByPosition(14, list.Receive()));
  ExpectHr(E_INVALIDARG, group.GetByPosition(0xFFFFFFFF, list.Receive()));
  ExpectHr(E_INVALIDARG, group.GetByPosition(14, nullptr));
  ExpectHr(E_POINTER, group.GetByPosition(13, nullptr));
  ExpectHr(E_POINTER, group.Get(InputSignalFMRadio, nullptr));
  ExpectHr(E_POINTER, group.Count(nullptr));
}

TEST(ChanInfoMgrGroup, SecondCreateAllKeepsTheLists) {
  CChanInfoMgrGroup group;
  ExpectHr(S_OK, group.CreateAll());
  const ListPtr list = ListOf(group, InputSignalFMRadio);
  AddChannel(list.Get(), 1);
  ExpectHr(S_OK, group.CreateAll());
  EXPECT_EQ(list.Get(), ListOf(group, InputSignalFMRadio).Get());
  EXPECT_EQ(1u, CountOf(list.Get()));
  ExpectRefCount(2, list.Get());
  UINT count = 0;
  group.Count(&count);
  EXPECT_EQ(14u, count);
}

TEST(ChanInfoMgrGroup, DestroyAllEmptiesWhatAClientHolds) {
  CChanInfoMgrGroup group;
  ExpectHr(S_OK, group.DestroyAll());
  ExpectHr(S_OK, group.CreateAll());
  const ListPtr list = ListOf(group, InputSignalFMRadio);
  AddChannel(list.Get(), 1);
  ExpectHr(S_OK, group.DestroyAll());
  ExpectRefCount(1, list.Get());
  EXPECT_EQ(0u, CountOf(list.Get()));
  UINT count = 7;
  group.Count(&count);
  EXPECT_EQ(0u, count);
  ExpectHr(S_OK, group.CreateAll());
  EXPECT_NE(list.Get(), ListOf(group, InputSignalFMRadio).Get());
}

// The lists go, what they were loaded from stays: another list, or the file, may still need it.
TEST(ChanInfoMgrGroup, DestroyAllLeavesTheDocument) {
  ChannelSet country;
  {
    CChanInfoMgrGroup writer;
    ExpectHr(S_OK, writer.CreateAll());
    AddChannel(ListOf(writer, InputSignalFMRadio).Get(), 1);
    ExpectHr(S_OK, writer.SaveAll(country.Get()));
  }
  CChanInfoMgrGroup group;
  ExpectHr(S_OK, group.CreateAll());
  ExpectHr(S_OK, group.LoadOne(country.Get(), InputSignalFMRadio));
  EXPECT_EQ(1u, CountOf(ListOf(group, InputSignalFMRadio).Get()));
  ExpectHr(S_OK, group.DestroyAll());
  EXPECT_EQ((std::vector<LONG>{1}), Values(country.Get(), "./ChannelSet/Channel", "index"));
}

TEST(ChanInfoMgrGroup, DestructionClosesTheLists) {
  ListPtr list;
  {
    CChanInfoMgrGroup group;
    ExpectHr(S_OK, group.CreateAll());
    list = ListOf(group, InputSignalTDMBMobile);
    AddChannel(list.Get(), 1);
  }
  ExpectRefCount(1, list.Get());
  EXPECT_EQ(0u, CountOf(list.Get()));
}

TEST(ChanInfoMgrGroup, SaveAllWithNothingDirtyFailsAndCreatesNothing) {
  CChanInfoMgrGroup group;
  ChannelSet country;  // any element will do
  ExpectHr(E_FAIL, group.SaveAll(country.Get()));
  ExpectHr(S_OK, group.CreateAll());
  ExpectHr(E_FAIL, group.SaveAll(country.Get()));
  EXPECT_EQ(0, country.Count("./ChannelSet"));
}

TEST(ChanInfoMgrGroup, SaveAllSavesTheDirtyLists) {
  CChanInfoMgrGroup group;
  ExpectHr(S_OK, group.CreateAll());
  ChannelSet country;
  for (const InputSignalType signalType :
       {InputSignalISDBTerrestrialOneSeg, InputSignalDVBTerrestrial, InputSignalDVBSatellite,
        InputSignalAnalogAntenna}) {
    AddChannel(ListOf(group, signalType).Get(), 1);
  }
  // A dirty record is enough, and an empty dirty list is saved too.
  ListOf(group, InputSignalAnalogAntenna)->SetDirty(0);
  ListOf(group, InputSignalFMRadio)->SetDirty(1);
  ExpectHr(S_OK, group.SaveAll(country.Get()));
  EXPECT_EQ((std::vector<LONG>{1, 5, 64, 80, 176}),
            Values(country.Get(), "./ChannelSet", "inputSignalType"));
  EXPECT_EQ((std::vector<LONG>{1}),
            Values(country.Get(), "./ChannelSet[@inputSignalType='64']/Channel", "index"));
  ExpectHr(E_FAIL, group.SaveAll(country.Get()));
  // An existing set is used again.
  AddChannel(ListOf(group, InputSignalDVBSatellite).Get(), 2);
  ExpectHr(S_OK, group.SaveAll(country.Get()));
  EXPECT_EQ((std::vector<LONG>{1, 2}),
            Values(country.Get(), "./ChannelSet[@inputSignalType='64']/Channel", "index"));
  EXPECT_EQ(5, country.Count("./ChannelSet"));
}

// A list that answers anything but S_OK counts as not saved; its set is there all the same.
TEST(ChanInfoMgrGroup, SaveAllOfTypesWithoutAFormFails) {
  CChanInfoMgrGroup group;
  ExpectHr(S_OK, group.CreateAll());
  ChannelSet country;
  AddChannel(ListOf(group, InputSignalDVBCable).Get(), 1);
  ExpectHr(E_FAIL, group.SaveAll(country.Get()));
  EXPECT_EQ((std::vector<LONG>{48}), Values(country.Get(), "./ChannelSet", "inputSignalType"));
  AddChannel(ListOf(group, InputSignalDVBCable).Get(), 2);
  AddChannel(ListOf(group, InputSignalFMRadio).Get(), 1);
  ExpectHr(S_OK, group.SaveAll(country.Get()));
}

TEST(ChanInfoMgrGroup, LoadOneLoadsItsSetOnly) {
  ChannelSet country;
  {
    CChanInfoMgrGroup writer;
    ExpectHr(S_OK, writer.CreateAll());
    AddChannel(ListOf(writer, InputSignalFMRadio).Get(), 1);
    AddChannel(ListOf(writer, InputSignalFMRadio).Get(), 2);
    AddChannel(ListOf(writer, InputSignalDVBTerrestrial).Get(), 1);
    ExpectHr(S_OK, writer.SaveAll(country.Get()));
  }
  CChanInfoMgrGroup group;
  ExpectHr(S_OK, group.LoadOne(country.Get(), InputSignalFMRadio));  // no lists yet
  ExpectHr(S_OK, group.CreateAll());
  ExpectHr(S_OK, group.LoadOne(country.Get(), InputSignalFMRadio));
  EXPECT_EQ(2u, CountOf(ListOf(group, InputSignalFMRadio).Get()));
  EXPECT_EQ(0u, CountOf(ListOf(group, InputSignalDVBTerrestrial).Get()));
  // The list is bound to the set.
  ListOf(group, InputSignalFMRadio)->Clear();
  EXPECT_EQ(0, country.Count("./ChannelSet[@inputSignalType='5']/Channel"));
}

TEST(ChanInfoMgrGroup, LoadOneSwallowsFailures) {
  CChanInfoMgrGroup group;
  ExpectHr(S_OK, group.CreateAll());
  ChannelSet country;
  ExpectHr(S_OK, group.LoadOne(country.Get(), InputSignalFMRadio));
  ExpectHr(S_OK, group.LoadOne(country.Get(), InputSignalAMRadio));
  ExpectHr(S_OK, group.LoadOne(dom::Element(), InputSignalFMRadio));
  EXPECT_EQ(0, country.Count("./ChannelSet"));
  ExpectHr(E_FAIL, group.SaveAll(dom::Element()));
  AddChannel(ListOf(group, InputSignalFMRadio).Get(), 1);
  ExpectHr(E_FAIL, group.SaveAll(dom::Element()));
  EXPECT_EQ(1, DirtyOf(ListOf(group, InputSignalFMRadio).Get()));
}

}  // namespace
