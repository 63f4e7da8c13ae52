#include "tool/satellite_home.h"

#include <filesystem>
#include <map>

namespace zortunedex::kit::tool {

std::string CatalogueFile(const std::string& satellites, const std::string& lnbs) {
  return "<?xml version='1.0' encoding='utf-8'?><S><SAT_TABLE>" + satellites +
         "</SAT_TABLE><LNB_TABLE>" + lnbs + "</LNB_TABLE></S>";
}

std::string SettingsFile(const std::string& dishes) {
  return "<?xml version='1.0' encoding='utf-8'?><USER_SETTINGS><SAT_SETTING>" + dishes +
         "</SAT_SETTING></USER_SETTINGS>";
}

std::size_t CountOf(const std::string& part, const std::string& text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

FilesUnchanged::FilesUnchanged(const TempDir& directory, std::source_location where)
    : m_directory(directory), m_where(where), m_before(Content()) {}

FilesUnchanged::~FilesUnchanged() {
  if (Content() == m_before) return;
  ADD_FAILURE_AT(m_where.file_name(), static_cast<int>(m_where.line()))
      << "the directory was written to";
}

std::string FilesUnchanged::Content() const {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(m_directory.Path())) {
    const std::filesystem::path path = entry.path().lexically_relative(m_directory.Path());
    // Commands that change nothing make the lock, too.
    if (!entry.is_regular_file() || path.filename() == "lock") continue;
    files[path.string()] = m_directory.Read(path.string());
  }
  std::string content;
  for (const auto& [name, bytes] : files) content += name + '\n' + bytes + '\n';
  return content;
}

TableFolder::TableFolder(std::initializer_list<std::pair<std::string, std::string>> files) {
  for (const auto& [name, bytes] : files) m_tables.Write(name, bytes);
}

Outcome TableFolder::Build(Arguments more) const {
  Arguments arguments = {"catalogue", "build", m_tables.Path(), "-o", Target()};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return RunTool(arguments);
}

nlohmann::ordered_json TableFolder::Report(std::source_location where) const {
  return Build({"--json", "--force"}).Json(where);
}

nlohmann::ordered_json TableFolder::Ask(Arguments command, std::source_location where) const {
  command.insert(command.begin(), {"--dir", m_home.Path(), "--json"});
  return RunTool(command).Json(where);
}

}  // namespace zortunedex::kit::tool
