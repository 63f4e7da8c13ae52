#include "tool/printing/output.h"

#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/failure.h"
#include "kit/text/columns/text_table.h"
#include "platform/host.h"

namespace zortunedex::kit::tool {

namespace {

/// JSON with every control character escaped; the library's own escaping ends at U+001F.
std::string Escaped(std::string_view json) {
  std::string text;
  for (std::string_view rest = json; !rest.empty();) {
    const std::size_t size = rest.front() == '\xC2' ? 2 : 1;
    const auto last = static_cast<unsigned char>(rest[size - 1]);
    if (last == 0x7F || (size == 2 && last < 0xA0)) {
      char code[8];
      std::snprintf(code, sizeof(code), "\\u%04x", static_cast<unsigned>(last));
      text += code;
    } else {
      text += rest.substr(0, size);
    }
    rest.remove_prefix(size);
  }
  return text;
}

/// Lines two blanks further to the right. Line feeds of texts are escaped.
std::string Indented(std::string_view json) {
  std::string text = "  ";
  for (const char letter : json) {
    text += letter;
    if (letter == '\n') text += "  ";
  }
  return text;
}

}  // namespace

void PrintTable(const std::vector<std::vector<std::string>>& rows) {
  std::cout << TextTable(rows, host::OutputWidth());
}

void PrintJson(const nlohmann::ordered_json& value) { PrintJsonText(value.dump(2)); }

void PrintJsonText(std::string_view json) { std::cout << Escaped(json) << '\n'; }

void PrintJsonArray(std::size_t count,
                    const std::function<nlohmann::ordered_json(std::size_t)>& value) {
  for (std::size_t i = 0; i < count; ++i) {
    std::cout << (i == 0 ? "[\n" : ",\n") << Escaped(Indented(value(i).dump(2)));
  }
  std::cout << (count == 0 ? "[]\n" : "\n]\n");
}

void PrintNote(const std::string& note) { std::cerr << "tunedex: " << Printable(note) << '\n'; }

void FinishOutput() {
  if (!std::cout.flush()) throw UnwrittenOutput{E_FAIL, "the output could not be written"};
}

}  // namespace zortunedex::kit::tool
