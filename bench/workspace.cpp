#include "bench/workspace.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <map>
#include <memory>

#include "bench/channel_data.h"
#include "bench/check.h"
#include "bench/dvb_file.h"

namespace bench {

const Workspace& Workspace::Of(UINT count) {
  static std::map<UINT, std::unique_ptr<const Workspace>> all;
  std::unique_ptr<const Workspace>& found = all[count];
  if (!found) found.reset(new Workspace(count));
  return *found;
}

Workspace::Workspace(std::filesystem::path directory, UINT count)
    : m_directory(std::move(directory)), m_count(count) {}

Workspace::Workspace(UINT count)
    : m_owned(std::in_place), m_directory(m_owned->Path()), m_count(count) {
  std::filesystem::create_directory(Source());
  std::filesystem::create_directory(Target());
  WriteFile(SourceFile(), MakeChannelFile(count));
  WriteDvbFile(*MakeDvbFile(count), DvbSourceFile());
}

TempDirectory::TempDirectory() {
  std::string name = (std::filesystem::temp_directory_path() / "zortunedex-bench-XXXXXX").string();
  Check(mkdtemp(name.data()) != nullptr, "no temporary directory");
  m_path = name;
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  Check(static_cast<bool>(file.flush()), "no space for the files");
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace bench
