#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// What became of a folder of transponder tables. File names are the bytes that the platform has.
struct CatalogueReport {
  struct LeftOut {
    std::string file;
    std::size_t line;  ///< 0: the whole file
    std::string reason;
  };

  std::vector<LeftOut> files;
  std::vector<LeftOut> entries;
  std::map<std::string, std::size_t> notHeld;  ///< values that the catalogue does not hold

  void LeaveOutFile(const std::string& file, const std::string& reason) {
    files.push_back({file, 0, reason});
  }
  void LeaveOutEntry(const std::string& file, std::size_t line, const std::string& reason) {
    entries.push_back({file, line, reason});
  }
  void NotHeld(const std::string& what) { ++notHeld[what]; }
};
