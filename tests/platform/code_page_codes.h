// What a text in a code page can be made of.
#pragma once

#include <string>
#include <vector>

#include "platform/com.h"

inline bool IsLead(UINT page, unsigned code) {
  if (page == 932) return (code >= 0x81 && code <= 0x9F) || (code >= 0xE0 && code <= 0xFC);
  return page < 1000 && code >= 0x81 && code <= 0xFE;
}

/// Every single byte, and every pair that begins with a lead byte and does not end in zero.
inline std::vector<std::string> Codes(UINT page) {
  std::vector<std::string> codes;
  for (unsigned first = 0; first < 256; ++first) {
    const char lead = static_cast<char>(first);
    if (!IsLead(page, first)) {
      codes.push_back({lead});
      continue;
    }
    for (unsigned second = 1; second < 256; ++second) {
      codes.push_back({lead, static_cast<char>(second)});
    }
  }
  return codes;
}
