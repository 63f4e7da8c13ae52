// What the system shows about the two files that are delivered.
#include <gtest/gtest.h>
#include <windows.h>
#include <winver.h>

#include <map>
#include <string>

#include "module/loaded_library.h"
#include "platform/text.h"

namespace {

using Words = std::map<std::string, std::string>;

class VersionOf {
 public:
  explicit VersionOf(const char* path) {
    const Bstr wide = text::FromUtf8(LoadedLibrary::Registered(path));
    m_bytes.resize(GetFileVersionInfoSizeW(wide.Get(), nullptr));
    EXPECT_FALSE(m_bytes.empty()) << path << " has no version";
    EXPECT_TRUE(
        GetFileVersionInfoW(wide.Get(), 0, static_cast<DWORD>(m_bytes.size()), m_bytes.data()));
  }

  const VS_FIXEDFILEINFO& Numbers() const {
    static const VS_FIXEDFILEINFO kNone = {};
    const auto* found = static_cast<const VS_FIXEDFILEINFO*>(Find(L"\\"));
    return found ? *found : kNone;
  }

  /// Every text that a version has by convention; "missing" where it has none.
  Words Texts() const {
    Words words;
    for (const std::string name :
         {"Comments", "CompanyName", "FileDescription", "FileVersion", "InternalName",
          "LegalCopyright", "OriginalFilename", "ProductName", "ProductVersion"}) {
      const Bstr path = text::FromUtf8("\\StringFileInfo\\040904B0\\" + name);
      const auto* found = static_cast<const wchar_t*>(Find(path.Get()));
      words[name] = found ? text::ToUtf8(found) : "missing";
    }
    return words;
  }

 private:
  const void* Find(const wchar_t* what) const {
    void* value = nullptr;
    UINT length = 0;
    return VerQueryValueW(m_bytes.data(), what, &value, &length) ? value : nullptr;
  }

  std::string m_bytes;
};

void ExpectVersion(const VersionOf& version, DWORD type, Words expected) {
  expected.insert({{"Comments", "missing"},
                   {"CompanyName", "ZorTunedex maintainers"},
                   {"FileVersion", ZORTUNEDEX_VERSION ".0"},
                   {"LegalCopyright", "Copyright (C) ZorTunedex maintainers"},
                   {"ProductName", "ZorTunedex"},
                   {"ProductVersion", ZORTUNEDEX_VERSION ".0"}});
  EXPECT_EQ(expected, version.Texts());
  const VS_FIXEDFILEINFO& fixed = version.Numbers();
  EXPECT_EQ(type, fixed.dwFileType);
  const auto part = [](DWORD value) { return std::to_string(value); };
  for (const auto& [high, low] : {std::pair(fixed.dwFileVersionMS, fixed.dwFileVersionLS),
                                  std::pair(fixed.dwProductVersionMS, fixed.dwProductVersionLS)}) {
    EXPECT_EQ(ZORTUNEDEX_VERSION ".0", part(HIWORD(high)) + "." + part(LOWORD(high)) + "." +
                                           part(HIWORD(low)) + "." + part(LOWORD(low)));
  }
}

}  // namespace

TEST(Version, OfTheLibrary) {
  ExpectVersion(VersionOf(ZORTUNEDEX_LIBRARY), VFT_DLL,
                {{"FileDescription", "ZorTunedex channel database"},
                 {"InternalName", "ZorTunedex"},
                 {"OriginalFilename", "ZorTunedex.dll"}});
}

TEST(Version, OfTheTool) {
  ExpectVersion(VersionOf(ZORTUNEDEX_TOOL), VFT_APP,
                {{"FileDescription", "ZorTunedex command-line host"},
                 {"InternalName", "tunedex"},
                 {"OriginalFilename", "tunedex.exe"}});
}
