// The .reg format: any bytes are read or refused; what is written reads back as the same file, also
// after every kind of change.
#include <string>

#include "platform/linux/reg_file.h"
#include "support/fuzz.h"
#include "support/input.h"

namespace {

void RequireWrittenIsRead(const RegFile& file) {
  const std::string written = file.Format();
  RegFile again;
  Require(again.Parse(written) && again.IsWhole());
  Require(again.Format() == written);
}

}  // namespace

void Fuzz(const BYTE* data, std::size_t size) {
  RegFile file;
  const bool isRead = file.Parse({reinterpret_cast<const char*>(data), size});
  if (!isRead) Require(RegFile().Format() == file.Format());
  RequireWrittenIsRead(file);
  Input input(data, size);
  const std::u16string path = u"HKEY_LOCAL_MACHINE\\a";
  std::u16string name(input.Text(20).View());
  // The format has no way to say a line break in a name, and callers use none.
  std::erase_if(name, [](char16_t unit) { return unit == u'\r' || unit == u'\n'; });
  file.SetText(path, name, input.Text(20).View());
  Require(file.FindText(path, name) != nullptr && file.HasSubKeys(u"HKEY_LOCAL_MACHINE"));
  file.SetNumber(path + u"\\b", u"n", input.Number());
  RequireWrittenIsRead(file);
  file.DeleteTree(path);
  Require(!file.HasKey(path));
  RequireWrittenIsRead(file);
}
