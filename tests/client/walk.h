// What a client does with a channel database, and what it sees: one text for both targets.
// Each target has its own library.h, which declares the interfaces.
#pragma once

#include <cstdint>
#include <cstdio>

#include "library.h"

/// Holds one reference.
template <typename I>
class Held {
 public:
  Held() = default;
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  ~Held() {
    if (m_object) m_object->Release();
  }
  I* operator->() const { return m_object; }
  I* Get() const { return m_object; }
  explicit operator bool() const { return m_object != nullptr; }
  I** Receive() { return &m_object; }

 private:
  I* m_object = nullptr;
};

class Walk {
 public:
  Walk(IZorTunedex* database, BSTR directory) : m_database(database), m_directory(directory) {}

  /// Opens the directory and prints every channel of the satellite list.
  void List() {
    Say("open", m_database->Open(m_directory, kCountry, kType));
    Held<IChannelInfoMgr> list;
    Say("list", m_database->GetChannelInfoMgr(kType, list.Receive()));
    if (!list) return;
    UINT count = 0;
    Say("count", list->GetChannelCount(kAllServices, &count));
    std::printf("%u channels\n", static_cast<unsigned>(count));
    UINT index = 0;
    UINT next = 0;
    while (list->FindNextChannel(index, &next, kAllServices, 0, 0) == 0) {
      PrintChannel(list.Get(), next);
      index = next;
    }
    Say("close", m_database->Close());
  }

  /// Changes one channel, moves another, saves, and closes.
  void Change() {
    Say("open", m_database->Open(m_directory, kCountry, kType));
    Held<IChannelInfoMgr> list;
    Held<IChannelInfo> channel;
    Say("list", m_database->GetChannelInfoMgr(kType, list.Receive()));
    if (!list) return;
    Say("save unchanged", m_database->SaveChannelToFile());
    Say("channel", list->GetChannelInfoByIndex(1, channel.Receive()));
    if (!channel) return;
    Rename(channel.Get());
    Say("favourite", channel->SetFavor(1));
    Say("frequency", channel->SetChannelFreq(11953000));
    Say("frequency again", channel->SetChannelFreq(11953000));
    Retune(channel.Get());
    Say("move", list->MoveChannel(1, 3));
    Say("move what is missing", list->MoveChannel(9999, 1));
    Say("save", m_database->SaveChannelToFile());
    Say("close", m_database->Close());
  }

 private:
  static constexpr DWORD kCountry = 49;
  static constexpr InputSignalType kType = InputSignalDVBSatellite;
  static constexpr DWORD kAllServices = 0xFFFFFFFF;

  static void Say(const char* step, HRESULT result) {
    std::printf("%s: %08x\n", step, static_cast<unsigned>(result));
  }

  /// Prints a text as UTF-8 and frees it.
  static void PrintText(const char* name, BSTR text) {
    std::printf(" %s=\"", name);
    const UINT length = SysStringLen(text);
    for (UINT i = 0; i < length; ++i) {
      const auto unit = static_cast<unsigned>(text[i]);
      if (unit < 0x80) {
        std::printf("%c", static_cast<char>(unit));
      } else {
        std::printf("\\u%04x", unit);
      }
    }
    std::printf("\"");
    SysFreeString(text);
  }

  static void PrintChannel(IChannelInfoMgr* list, UINT index) {
    Held<IChannelInfo> channel;
    if (list->GetChannelInfoByIndex(index, channel.Receive()) != 0) return;
    UINT number = 0;
    UINT favourite = 0;
    DWORD frequency = 0;
    BSTR name = nullptr;
    BSTR displayName = nullptr;
    channel->GetChannelNo(&number);
    channel->GetFavor(&favourite);
    channel->GetChannelFreq(&frequency);
    channel->GetChannelName(&name);
    channel->GetChannelDspName(&displayName);
    std::printf("%u: no=%u favourite=%u frequency=%u", static_cast<unsigned>(index),
                static_cast<unsigned>(number), static_cast<unsigned>(favourite),
                static_cast<unsigned>(frequency));
    PrintText("name", name);
    PrintText("shown", displayName);
    PrintStation(channel.Get());
  }

  static void PrintStation(IChannelInfo* channel) {
    _StationTuneInfo station = {};
    channel->GetStationInfo(&station);
    std::uint32_t sum = 2166136261U;
    for (DWORD i = 0; i < station.cbInformation; ++i) {
      sum = (sum ^ station.pbInformation[i]) * 16777619U;
    }
    std::printf(" tsid=%d block=%u/%08x\n", static_cast<int>(station.lTSID),
                static_cast<unsigned>(station.cbInformation), static_cast<unsigned>(sum));
    CoTaskMemFree(station.pbInformation);
  }

  static void Rename(IChannelInfo* channel) {
    static constexpr OLECHAR kName[] = {'E', 'r', 's', 't',  'e',    's', ' ',
                                        '&', ' ', '<', 0xC4, 0x6F22, '>', 0};
    const BSTR name = SysAllocString(kName);
    Say("rename", channel->SetChannelDspName(name));
    SysFreeString(name);
  }

  static void Retune(IChannelInfo* channel) {
    _StationTuneInfo station = {};
    Say("station", channel->GetStationInfo(&station));
    station.lTSID = 1101;
    Say("retune", channel->SetStationInfo(&station));
    CoTaskMemFree(station.pbInformation);
  }

  IZorTunedex* m_database;
  BSTR m_directory;
};
