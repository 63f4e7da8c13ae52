// The .reg format: any bytes are read or refused; what is written reads back as the same file, also
// after every kind of change.
#include "support/fuzz.h"
#include "support/reg_files.h"

void Fuzz(const BYTE* data, std::size_t size) {
  RegFile file;
  const bool isRead = file.Parse({reinterpret_cast<const char*>(data), size});
  if (!isRead) Require(RegFile().Format() == file.Format());
  RequireWrittenIsRead(file);
  Input input(data, size);
  const std::u16string path = u"HKEY_LOCAL_MACHINE\\a";
  const std::u16string name = ValueName(input);
  file.SetText(path, name, input.Text(20).View());
  Require(file.FindText(path, name) != nullptr && file.HasSubKeys(u"HKEY_LOCAL_MACHINE"));
  file.SetNumber(path + u"\\b", u"n", input.Number());
  RequireWrittenIsRead(file);
  file.DeleteTree(path);
  Require(!file.HasKey(path));
  RequireWrittenIsRead(file);
}
