// What became of a folder of transponder tables.
#pragma once

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

class CatalogueReport {
 public:
  void LeaveOutFile(const std::string& file, const std::string& reason);
  void LeaveOutEntry(const std::string& file, std::size_t line, const std::string& reason);
  /// A file whose name and header tell different positions.
  void TwoPositions(const std::string& file, const std::string& name, const std::string& header);
  /// A value that the catalogue does not hold.
  void NotHeld(const std::string& what) { ++m_notHeld[what]; }

  /// One line for every file, for every reason and for every kind of value, on standard error.
  void PrintWarnings() const;
  /// Members leftOut, twoPositions and notHeld.
  void AddTo(nlohmann::ordered_json& object) const;

 private:
  struct LeftOut {
    std::string file;
    std::size_t line;  ///< 0: the whole file
    std::string reason;
  };

  struct Positions {
    std::string file;
    std::string name;    ///< in the file's name; this one is taken
    std::string header;  ///< in its header
  };

  std::vector<LeftOut> m_files;
  std::vector<LeftOut> m_entries;
  std::vector<Positions> m_positions;
  std::map<std::string, std::size_t> m_notHeld;
};
