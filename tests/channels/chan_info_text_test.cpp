// Names in code pages whose characters have several bytes: the cut of a long one must not leave
// half a character.
#include "channels/channel_records.h"
#include "support/code_page.h"

namespace {

class ChanInfoText932 : public InCodePage<932> {};
class ChanInfoText65001 : public InCodePage<65001> {};

std::basic_string<OLECHAR> Repeat(OLECHAR unit, std::size_t count) {
  return std::basic_string<OLECHAR>(count, unit);
}

constexpr OLECHAR kSo = 0x30BD;  // 0x83 0x5C in code page 932: its second byte is a backslash

TEST_F(ChanInfoText932, NamesAreStoredInTheCodePage) {
  const ComPtr<IChannelInfo> record = MakeRecord(InputSignalISDBTerrestrialOneSeg);
  Station station(InputSignalISDBTerrestrialOneSeg);
  ExpectHr(S_OK, record->SetStationInfo(station.Get()));
  const auto name = Repeat(kSo, 3);
  ExpectHr(S_OK, record->SetChannelName(Bstr(name).Get()));
  const std::vector<BYTE> bytes = StationCopy(record.Get()).Bytes();
  const std::vector<BYTE> expected = {0x83, 0x5C, 0x83, 0x5C, 0x83, 0x5C, 0};
  EXPECT_EQ(expected, std::vector<BYTE>(bytes.begin() + 608, bytes.begin() + 615));
  Bstr read;
  ExpectHr(S_OK, record->GetChannelName(read.Receive()));
  ExpectText(name, read.Get());
}

TEST_F(ChanInfoText932, LongNamesAreCutBetweenCharacters) {
  // The room is 80 bytes with the terminator in both; an odd letter in front shifts the cut.
  for (const InputSignalType signalType : {InputSignalAnalogCable, InputSignalFMRadio}) {
    for (const std::size_t shift : {0u, 1u}) {
      const ComPtr<IChannelInfo> record = MakeRecord(signalType);
      Station station(signalType);
      station.Fill(0x2E);
      ExpectHr(S_OK, record->SetStationInfo(station.Get()));
      const auto letters = Repeat('a', shift);
      ExpectHr(S_OK, record->SetChannelName(Bstr(letters + Repeat(kSo, 60)).Get()));
      Bstr read;
      ExpectHr(S_OK, record->GetChannelName(read.Receive()));
      ExpectText(letters + Repeat(kSo, 39), read.Get());
    }
  }
}

TEST_F(ChanInfoText65001, NamesAreCutBetweenCharacters) {
  for (std::size_t shift = 0; shift < 3; ++shift) {
    const ComPtr<IChannelInfo> record = MakeRecord(InputSignalFMRadio);
    Station station(InputSignalFMRadio);
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    const auto letters = Repeat('a', shift);
    ExpectHr(S_OK, record->SetChannelName(Bstr(letters + Repeat(kSo, 60)).Get()));
    Bstr read;
    ExpectHr(S_OK, record->GetChannelName(read.Receive()));
    ExpectText(letters + Repeat(kSo, (79 - shift) / 3), read.Get());
  }
}

TEST_F(ChanInfoText932, AtscDisplayNamesAreCutBetweenCharacters) {
  for (const std::size_t shift : {0u, 1u}) {
    const ComPtr<IChannelInfo> record = MakeRecord(InputSignalATSCCable);
    Station station(InputSignalATSCCable);
    std::string name(shift, 'a');
    while (name.size() + 2 <= 336) name += "\x83\x5C";
    station.Word(4, 7).Word(8, 2).Text(192, name);
    ExpectHr(S_OK, record->SetStationInfo(station.Get()));
    Bstr read;
    ExpectHr(S_OK, record->GetChannelDspName(read.Receive()));
    // 4 bytes of numbers, then 255 bytes: 127 characters, and the odd byte stays empty or an 'a'.
    const Bstr numbers = Wide("7.2 " + std::string(shift, 'a'));
    ExpectText(std::basic_string<OLECHAR>(numbers.View()) + Repeat(kSo, 127), read.Get());
  }
}

}  // namespace
