#pragma once

#include "channels/chan_info.h"
#include "platform/com_ptr.h"

/// A record of a list while it is asked. One that a host implements may make its list let go of it
/// meanwhile, so it is held; our own calls nobody back, and a long scan saves the counting.
class HeldRecord {
 public:
  HeldRecord() = default;
  explicit HeldRecord(IChannelInfo* record) : m_record(record) {
    if (CChanInfo::From(record) == nullptr) m_reference = ComPtr<IChannelInfo>(record);
  }

  IChannelInfo* Get() const { return m_record; }
  IChannelInfo* operator->() const { return m_record; }
  explicit operator bool() const { return m_record != nullptr; }

 private:
  IChannelInfo* m_record = nullptr;
  ComPtr<IChannelInfo> m_reference;
};
