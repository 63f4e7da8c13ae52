#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace zortunedex::kit {

/// What became of a folder of transponder tables. File names are the bytes that the platform has.
struct CatalogueReport {
  struct LeftOut {
    std::string file;
    std::size_t line;  ///< 0: the whole file
    std::string reason;
  };

  /// A file whose name and header tell different positions.
  struct Positions {
    std::string file;
    std::string name;    ///< in the file's name; this one is taken
    std::string header;  ///< in its header
  };

  std::vector<LeftOut> files;
  std::vector<LeftOut> entries;
  std::vector<Positions> twoPositions;
  std::map<std::string, std::size_t> notHeld;  ///< values that the catalogue does not hold

  void LeaveOutFile(const std::string& file, const std::string& reason) {
    files.push_back({file, 0, reason});
  }
  void LeaveOutEntry(const std::string& file, std::size_t line, const std::string& reason) {
    entries.push_back({file, line, reason});
  }
  void TwoPositions(const std::string& file, const std::string& name, const std::string& header) {
    twoPositions.push_back({file, name, header});
  }
  void NotHeld(const std::string& what) { ++notHeld[what]; }
};

}  // namespace zortunedex::kit
