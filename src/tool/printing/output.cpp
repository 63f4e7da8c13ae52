#include "tool/printing/output.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/failure.h"

namespace {

std::size_t CharacterCount(const std::string& utf8) {
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char byte) {
    return (static_cast<unsigned>(byte) & 0xC0) != 0x80;
  }));
}

}  // namespace

void PrintTable(const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths(rows.front().size());
  for (const std::vector<std::string>& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], CharacterCount(row[i]));
    }
  }
  std::string text;
  for (const std::vector<std::string>& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      text += row[i];
      if (i + 1 < row.size()) text.append(widths[i] - CharacterCount(row[i]) + 2, ' ');
    }
    text += '\n';
  }
  std::cout << text;
}

void PrintJson(const nlohmann::ordered_json& value) {
  const std::string json = value.dump(2);
  std::string text;
  for (std::string_view rest = json; !rest.empty();) {
    const std::size_t size = rest.front() == '\xC2' ? 2 : 1;
    const auto last = static_cast<unsigned char>(rest[size - 1]);
    // The library's own escaping ends at U+001F.
    if (last == 0x7F || (size == 2 && last < 0xA0)) {
      char code[8];
      std::snprintf(code, sizeof(code), "\\u%04x", static_cast<unsigned>(last));
      text += code;
    } else {
      text += rest.substr(0, size);
    }
    rest.remove_prefix(size);
  }
  std::cout << text << '\n';
}

void PrintNote(const std::string& note) { std::cerr << "tunedex: " << Printable(note) << '\n'; }

void FinishOutput() {
  if (!std::cout.flush()) throw UnwrittenOutput{E_FAIL, "the output could not be written"};
}
