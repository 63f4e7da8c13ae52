// The files that a database saves, as a table: tests go through every one of them in every form. A
// new file is a new row.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "core/interfaces.h"
#include "platform/com_ptr.h"
#include "support/temp_dir.h"

struct SavedFile {
  const char* label;
  const char* name;
  InputSignalType signalType;
  EStorageType storage;
  /// Puts `count` records in place of those that are there. Saving them makes a file that differs
  /// for every count.
  void (*fill)(IZorTunedex* database, UINT count);
  HRESULT (*save)(IZorTunedex* database);
  /// How many records there are; their values are checked, too.
  UINT (*count)(IZorTunedex* database);
  /// What has to be in the file before records can be saved in it; null where a save makes the
  /// file. Such a file is never written over one that cannot be read.
  const char* start = nullptr;
  /// A file beside it that `fill` writes; null for none.
  const char* other = nullptr;

  /// How many files there are after a save.
  std::size_t FileCount() const { return other == nullptr ? 1 : 2; }
};

inline std::ostream& operator<<(std::ostream& out, const SavedFile& file) {
  return out << file.label;
}

extern const std::vector<SavedFile> kSavedFiles;

/// The country that their databases are opened with.
constexpr DWORD kSavedCountry = 49;

/// The area of the customer's lists in their preset file.
constexpr LONG kCustomerArea = 1;

/// A new database, closed; the result of making it.
HRESULT NewDatabase(ComPtr<IZorTunedex>& database);

/// A database on the directory, opened for the file, which is started where it has to be; null, and
/// reported, when that fails.
ComPtr<IZorTunedex> OpenFor(const SavedFile& file, const TempDir& directory);

/// Fills and saves; the result of saving.
HRESULT SaveRecords(const SavedFile& file, const TempDir& directory, UINT count);

/// How many records a database that is opened now finds.
UINT LoadedRecords(const SavedFile& file, const TempDir& directory);
