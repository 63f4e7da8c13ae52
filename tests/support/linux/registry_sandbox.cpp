#include "support/registry_sandbox.h"

#include <filesystem>
#include <sstream>

#include "platform/com.h"
#include "support/temp_dir.h"

namespace {

constexpr char kRegistryFile[] = "machine.reg";

// Host programs, which see the library's exports alone, are linked with this file too.
std::string ToUtf8(const std::string& littleEndian) {
  std::u16string wide;
  for (std::size_t i = 0; i + 1 < littleEndian.size(); i += 2) {
    wide += static_cast<char16_t>(static_cast<unsigned char>(littleEndian[i]) |
                                  static_cast<unsigned char>(littleEndian[i + 1]) << 8);
  }
  return std::filesystem::path(wide).string();
}

}  // namespace

struct RegistrySandbox::Place {
  TempDir dir;
};

RegistrySandbox::RegistrySandbox() : m_place(std::make_unique<Place>()) {
  ZorTunedexSetRegistryFile(FileName().c_str());
}

RegistrySandbox::~RegistrySandbox() { ZorTunedexSetRegistryFile(nullptr); }

std::string RegistrySandbox::FileName() const { return m_place->dir.File(kRegistryFile); }

// The file is one that the library wrote: one line for a key or a value, no comments.
RegistrySandbox::Contents RegistrySandbox::Read() const {
  std::istringstream lines(ToUtf8(m_place->dir.Read(kRegistryFile)));
  Contents contents;
  Values* values = nullptr;
  for (std::string line; std::getline(lines, line);) {
    if (line.ends_with('\r')) line.pop_back();
    const std::size_t equals = line.starts_with('@') ? 1 : line.find("\"=") + 1;
    if (line.starts_with('[')) {
      const std::string key = line.substr(1, line.size() - 2);
      for (std::size_t end = key.find('\\', key.find('\\') + 1); end != std::string::npos;
           end = key.find('\\', end + 1)) {
        contents[key.substr(0, end)];
      }
      values = &contents[key];
    } else if (values && equals != 0) {
      const std::string name = equals == 1 ? "" : line.substr(1, equals - 2);
      (*values)[name] = line.substr(equals + 1);
    }
  }
  // A root is no key that somebody made.
  std::erase_if(contents, [](const auto& entry) {
    return entry.first.find('\\') == std::string::npos && entry.second.empty();
  });
  return contents;
}
