// What a text in a code page can be made of, and where it can be cut.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/text.h"

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

/// All texts over an alphabet up to a length.
inline std::vector<std::string> Texts(std::string_view alphabet, std::size_t longest) {
  std::vector<std::string> texts = {""};
  std::size_t begin = 0;
  for (std::size_t length = 1; length <= longest; ++length) {
    const std::size_t end = texts.size();
    for (; begin < end; ++begin) {
      for (const char letter : alphabet) texts.push_back(texts[begin] + letter);
    }
  }
  return texts;
}

/// Nothing is lost or changed at the place of the cut.
inline void ExpectCleanCut(const std::string& narrow, std::size_t cut) {
  std::basic_string<OLECHAR> halves(text::FromNarrow(narrow.substr(0, cut)).View());
  halves += text::FromNarrow(narrow.substr(cut)).View();
  EXPECT_EQ(halves, text::FromNarrow(narrow).View()) << narrow << " cut at " << cut;
}
