#include "reliability/killed_save.h"

#include "support/linux/child.h"

int StatusOfKilledSave(const SavedFile& file, const TempDir& directory, UINT count,
                       disk_faults::Fault fault, int position) {
  const ComPtr<IZorTunedex> database = OpenFor(file, directory);
  file.fill(database.Get(), count);
  return ExitStatusOf([&] {
    const disk_faults::Scope scope(fault, position);
    file.save(database.Get());
    return 0;
  });
}
