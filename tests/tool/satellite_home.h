// Data directories with satellites for the tests of the host tool.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

/// A SatelliteInfo.xml with these elements in its tables.
std::string CatalogueFile(const std::string& satellites, const std::string& lnbs = "");
/// A UserSettings.xml with this inside of SAT_SETTING.
std::string SettingsFile(const std::string& dishes);

/// How often `part` stands in `text`.
std::size_t CountOf(const std::string& part, const std::string& text);

/// Says at its end when the files of a directory are not what they were.
class FilesUnchanged {
 public:
  explicit FilesUnchanged(const TempDir& directory,
                          std::source_location where = std::source_location::current());
  ~FilesUnchanged();

 private:
  std::string Content() const;

  const TempDir& m_directory;
  std::source_location m_where;
  std::string m_before;
};

/// A folder of tables and a directory for the catalogue that is made of it.
class TableFolder {
 public:
  TableFolder() = default;
  TableFolder(std::initializer_list<std::pair<std::string, std::string>> files);

  const TempDir& Tables() const { return m_tables; }
  const TempDir& Home() const { return m_home; }
  std::string Target() const { return m_home.File("SatelliteInfo.xml"); }

  Outcome Build(Arguments more = {}) const;
  /// What the build reports; a failure of the test where it does not succeed.
  nlohmann::ordered_json Report(std::source_location where = std::source_location::current()) const;
  /// What a command answers about the catalogue that was made.
  nlohmann::ordered_json Ask(Arguments command,
                             std::source_location where = std::source_location::current()) const;

 private:
  TempDir m_tables;
  TempDir m_home;
};

}  // namespace zortunedex::kit::tool
