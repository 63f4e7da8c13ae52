#include "support/scratch.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/fuzz.h"

namespace fs = std::filesystem;

Scratch::Scratch() {
  std::string path = (fs::temp_directory_path() / "zortunedex-fuzz-XXXXXX").string();
  Require(mkdtemp(path.data()) != nullptr);
  m_path = path;
}

Scratch::~Scratch() {
  std::error_code ignored;
  fs::remove_all(m_path, ignored);
}

Scratch& Scratch::Emptied() {
  static Scratch scratch;
  for (const fs::directory_entry& entry : fs::directory_iterator(scratch.m_path)) {
    fs::remove_all(entry.path());
  }
  return scratch;
}

Bstr Scratch::Path() const { return Bstr(fs::path(m_path).u16string()); }

void Scratch::Write(const std::string& name, std::string_view bytes) const {
  std::ofstream file(File(name), std::ios::binary);
  file << bytes;
  Require(static_cast<bool>(file.flush()));
}

std::string Scratch::Read(const std::string& name) const {
  std::ifstream file(File(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Scratch::RequireCopyIs(const std::string& name, const std::string& bytes) const {
  const std::string kept = Read(name + ".unreadable");
  Require(kept.empty() || kept == bytes);
}

void Scratch::RequireNoStrayFile() const {
  for (const fs::directory_entry& entry : fs::directory_iterator(m_path)) {
    const std::string name = entry.path().filename().string();
    Require(name.ends_with(".xml") || name.find(".xml.unreadable") != name.npos);
  }
}
