// What the built library carries besides its code.
#include <gtest/gtest.h>
#include <windows.h>
#include <winver.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "module/loaded_library.h"
#include "platform/text.h"

namespace {

class Resources : public testing::Test {
 protected:
  Resources() {
    const Bstr path = text::FromUtf8(LoadedLibrary::Registered(ZORTUNEDEX_LIBRARY));
    m_module = LoadLibraryExW(path.Get(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  }
  ~Resources() override { FreeLibrary(m_module); }

  // Bytes of a resource; empty, and reported, when there is none.
  std::string Find(WORD id, const wchar_t* type) const {
    const HRSRC place = FindResourceW(m_module, MAKEINTRESOURCEW(id), type);
    const HGLOBAL resource = place ? LoadResource(m_module, place) : nullptr;
    const void* bytes = resource ? LockResource(resource) : nullptr;
    if (bytes == nullptr) {
      ADD_FAILURE() << "no resource " << id;
      return {};
    }
    return {static_cast<const char*>(bytes), SizeofResource(m_module, place)};
  }

  HMODULE m_module = nullptr;
};

}  // namespace

TEST_F(Resources, TheRegistryScript) {
  std::ifstream file(ZORTUNEDEX_SOURCE "/module/ZorTunedex.rgs", std::ios::binary);
  const std::string script{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  EXPECT_FALSE(script.empty());
  EXPECT_EQ(script, Find(102, L"REGISTRY"));
}

TEST_F(Resources, TheTypeLibrary) { EXPECT_EQ("MSFT", Find(1, L"TYPELIB").substr(0, 4)); }

TEST_F(Resources, TheName) {
  wchar_t name[64] = {};
  EXPECT_EQ(10, LoadStringW(m_module, 100, name, 64));
  EXPECT_STREQ(L"ZorTunedex", name);
}

TEST_F(Resources, TheVersion) {
  std::string version = Find(VS_VERSION_INFO, MAKEINTRESOURCEW(16));
  void* value = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueW(version.data(), L"\\", &value, &length));
  ASSERT_EQ(sizeof(VS_FIXEDFILEINFO), length);
  const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(value);
  EXPECT_EQ(0x00010000U, fixed->dwFileVersionMS);
  EXPECT_EQ(static_cast<DWORD>(VFT_DLL), fixed->dwFileType);
  ASSERT_TRUE(VerQueryValueW(version.data(), L"\\StringFileInfo\\040904B0\\ProductVersion", &value,
                             &length));
  EXPECT_STREQ(L"" ZORTUNEDEX_VERSION ".0", static_cast<const wchar_t*>(value));
}
