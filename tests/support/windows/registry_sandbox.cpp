#include "support/registry_sandbox.h"

#include <windows.h>

#include <cstdio>
#include <stdexcept>
#include <vector>

namespace {

const struct {
  HKEY root;
  const char* name;
} kRoots[] = {
    {HKEY_LOCAL_MACHINE, "HKEY_LOCAL_MACHINE"},
    {HKEY_CLASSES_ROOT, "HKEY_CLASSES_ROOT"},
    {HKEY_CURRENT_USER, "HKEY_CURRENT_USER"},
};

class OpenedKey {
 public:
  explicit OpenedKey(HKEY key) : m_key(key) {}
  explicit OpenedKey(const std::wstring& path) {
    if (RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        &m_key, nullptr) != ERROR_SUCCESS) {
      throw std::runtime_error("no registry to test with");
    }
  }
  OpenedKey(const OpenedKey&) = delete;
  OpenedKey& operator=(const OpenedKey&) = delete;
  ~OpenedKey() { RegCloseKey(m_key); }
  HKEY Get() const { return m_key; }

 private:
  HKEY m_key = nullptr;
};

// Host programs, which see the library's exports alone, are linked with this file too.
std::string ToUtf8(const std::wstring& wide) {
  const auto length = static_cast<int>(wide.size());
  std::string utf8(wide.size() * 3, '\0');
  const int size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(),
                                       static_cast<int>(utf8.size()), nullptr, nullptr);
  utf8.resize(static_cast<std::size_t>(size));
  return utf8;
}

std::string Quote(const std::string& text) {
  std::string quoted = "\"";
  for (const char byte : text) {
    if (byte == '"' || byte == '\\') quoted += '\\';
    quoted += byte;
  }
  return quoted + '"';
}

std::string Format(DWORD type, const std::vector<BYTE>& data) {
  char digits[16];
  if (type == REG_SZ) {
    std::wstring wide(reinterpret_cast<const wchar_t*>(data.data()), data.size() / 2);
    if (wide.ends_with(L'\0')) wide.pop_back();
    return Quote(ToUtf8(wide));
  }
  if (type == REG_DWORD) {
    std::snprintf(digits, sizeof(digits), "dword:%08x",
                  static_cast<unsigned>(data[0] | data[1] << 8 | data[2] << 16 | data[3] << 24));
    return digits;
  }
  std::string result = "hex:";
  if (type != REG_BINARY) {
    std::snprintf(digits, sizeof(digits), "hex(%x):", static_cast<unsigned>(type));
    result = digits;
  }
  for (std::size_t i = 0; i < data.size(); ++i) {
    std::snprintf(digits, sizeof(digits), i == 0 ? "%02x" : ",%02x", data[i]);
    result += digits;
  }
  return result;
}

void ReadKey(HKEY key, const std::string& name, bool isRoot, RegistrySandbox::Contents& contents) {
  constexpr DWORD kLongest = 16384;
  std::vector<wchar_t> child(kLongest);
  std::vector<BYTE> data(std::size_t{64} * 1024);
  if (!isRoot) contents[name];
  for (DWORD i = 0;; ++i) {
    DWORD length = kLongest;
    DWORD type = 0;
    auto size = static_cast<DWORD>(data.size());
    if (RegEnumValueW(key, i, child.data(), &length, nullptr, &type, data.data(), &size) !=
        ERROR_SUCCESS) {
      break;
    }
    contents[name][ToUtf8({child.data(), length})] =
        Format(type, {data.begin(), data.begin() + size});
  }
  for (DWORD i = 0;; ++i) {
    DWORD length = kLongest;
    if (RegEnumKeyExW(key, i, child.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS) {
      return;
    }
    HKEY below = nullptr;
    if (RegOpenKeyExW(key, child.data(), 0, KEY_READ, &below) != ERROR_SUCCESS) continue;
    const OpenedKey opened(below);
    ReadKey(opened.Get(), name + '\\' + ToUtf8({child.data(), length}), false, contents);
  }
}

}  // namespace

struct RegistrySandbox::Place {
  // Programs may test at the same time.
  std::wstring name = L"Software\\ZorTunedexTest" + std::to_wstring(GetCurrentProcessId());
  std::vector<std::unique_ptr<OpenedKey>> keys;
};

RegistrySandbox::RegistrySandbox() : m_place(std::make_unique<Place>()) {
  RegDeleteTreeW(HKEY_CURRENT_USER, m_place->name.c_str());
  for (const auto& [root, name] : kRoots) {
    const std::wstring wide(name, name + std::char_traits<char>::length(name));
    m_place->keys.push_back(std::make_unique<OpenedKey>(m_place->name + L'\\' + wide));
  }
  for (std::size_t i = 0; i < std::size(kRoots); ++i) {
    if (RegOverridePredefKey(kRoots[i].root, m_place->keys[i]->Get()) != ERROR_SUCCESS) {
      throw std::runtime_error("the registry cannot be put aside");
    }
  }
}

RegistrySandbox::~RegistrySandbox() {
  for (const auto& each : kRoots) RegOverridePredefKey(each.root, nullptr);
  m_place->keys.clear();
  RegDeleteTreeW(HKEY_CURRENT_USER, m_place->name.c_str());
}

RegistrySandbox::Contents RegistrySandbox::Read() const {
  Contents contents;
  for (std::size_t i = 0; i < std::size(kRoots); ++i) {
    ReadKey(m_place->keys[i]->Get(), kRoots[i].name, true, contents);
  }
  return contents;
}

std::string RegistrySandbox::FileName() const { return {}; }
