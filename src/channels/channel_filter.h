#pragma once

#include "core/interfaces.h"

/// Picks channels by service type, one after the other: a channel that names no service type is
/// judged by the one that was asked before it, the first such one as ServiceAll. So one filter goes
/// through a whole count or search, and every channel on the way is asked.
class ChannelFilter {
 public:
  ChannelFilter(DWORD serviceTypes, bool favoritesOnly)
      : m_serviceTypes(serviceTypes), m_favoritesOnly(favoritesOnly) {}

  bool Accepts(IChannelInfo* channelInfo) {
    EServiceType serviceType = m_serviceType;
    if (SUCCEEDED(channelInfo->GetServiceType(&serviceType))) m_serviceType = serviceType;
    if ((static_cast<DWORD>(m_serviceType) & m_serviceTypes) == 0) return false;
    UINT favor = 1;
    if (m_favoritesOnly) {
      favor = 0;
      channelInfo->GetFavor(&favor);
    }
    return favor != 0;
  }

 private:
  DWORD m_serviceTypes;
  bool m_favoritesOnly;
  EServiceType m_serviceType = ServiceAll;
};
