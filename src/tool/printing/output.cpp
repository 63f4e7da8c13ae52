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

void PrintJson(const nlohmann::ordered_json& value) { std::cout << value.dump(2) << '\n'; }

void PrintNote(const std::string& note) { std::cerr << "tunedex: " << note << '\n'; }

void FinishOutput() {
  if (!std::cout.flush()) throw Failure{E_FAIL, "the output could not be written"};
}
