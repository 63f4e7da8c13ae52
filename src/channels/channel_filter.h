#pragma once

#include "channels/chan_info.h"
#include "records/held_record.h"

/// Picks channels by service type, one after the other: a channel that names no service type is
/// judged by the one that was asked before it, the first such one as ServiceAll. So one filter goes
/// through a whole count or search, and every channel on the way is looked at. Our own keep their
/// service type; those of a host are asked each time.
class ChannelFilter {
 public:
  ChannelFilter(DWORD serviceTypes, bool favoritesOnly)
      : m_serviceTypes(serviceTypes), m_favoritesOnly(favoritesOnly) {}

  bool Accepts(const HeldRecord<CChanInfo, IChannelInfo>& channel) {
    const CChanInfo* own = channel.Own();
    EServiceType serviceType = m_serviceType;
    const HRESULT hr =
        own != nullptr ? own->Service().Give(serviceType) : channel->GetServiceType(&serviceType);
    if (SUCCEEDED(hr)) m_serviceType = serviceType;
    if ((static_cast<DWORD>(m_serviceType) & m_serviceTypes) == 0) return false;
    if (!m_favoritesOnly) return true;
    if (own != nullptr) return own->Favor() != 0;
    UINT favor = 0;
    channel->GetFavor(&favor);
    return favor != 0;
  }

 private:
  DWORD m_serviceTypes;
  bool m_favoritesOnly;
  EServiceType m_serviceType = ServiceAll;
};
