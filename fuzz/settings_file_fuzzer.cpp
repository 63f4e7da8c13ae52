// UserSettings.xml through the public interface: open and load any bytes, change, save, load and
// compare.
#include "support/database.h"
#include "support/fuzz.h"

void Fuzz(const BYTE* data, std::size_t size) {
  const std::string bytes(data, data + size);
  const Scratch& scratch = Scratch::Emptied();
  scratch.Write("UserSettings.xml", bytes);
  const ComPtr<IZorTunedex> database = OpenDatabase(scratch, {});
  ChangeDishes(database);
  Require(database->SaveUserSettingsToFile() == S_OK);
  scratch.RequireCopyIs("UserSettings.xml", bytes);

  const ComPtr<IZorTunedex> saved = OpenDatabase(scratch, {});
  Require(DescribeDishes(saved) == DescribeDishes(database));
  // Assignments that cannot be found in the file are written once more by each save.
  Require(saved->SaveUserSettingsToFile() == S_OK);
  Require(DescribeDishes(OpenDatabase(scratch, {})) == DescribeDishes(saved));
  scratch.RequireNoStrayFile();
}
