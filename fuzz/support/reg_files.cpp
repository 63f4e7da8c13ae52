#include "support/reg_files.h"

#include "support/fuzz.h"

void RequireWrittenIsRead(const RegFile& file) {
  const std::string written = file.Format();
  RegFile again;
  Require(again.Parse(written) && again.IsWhole());
  Require(again.Format() == written);
}

std::u16string ValueName(Input& input) {
  std::u16string name(input.Text(20).View());
  std::erase_if(name, [](char16_t unit) { return unit == u'\r' || unit == u'\n'; });
  return name;
}
