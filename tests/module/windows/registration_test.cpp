// What belongs to Windows: the type library's registration, and paths as Windows has them.
#include "core/interfaces.h"
#include "module/loaded_library.h"
#include "platform/com_ptr.h"
#include "platform/registry.h"
#include "platform/text.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

using Values = RegistrySandbox::Values;

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char byte : text) {
    if (byte == '\\') quoted += '\\';
    quoted += byte;
  }
  return quoted + '"';
}

// Wine and Windows differ in how they write these names.
std::string Small(std::string text) {
  for (char& byte : text) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
  }
  return text;
}

class TypeLibraryRegistration : public testing::Test {
 protected:
  // The values of a key by its name in small letters; a value that is nowhere in the registry when
  // there is none.
  Values ValuesOf(const std::string& key) const {
    for (const auto& [name, values] : m_sandbox.Read()) {
      if (Small(name) == key) return values;
    }
    return {{"missing", key}};
  }
  // Keys of the registry that hold the text.
  std::vector<std::string> KeysWith(const std::string& text) const {
    std::vector<std::string> keys;
    for (const auto& [name, values] : m_sandbox.Read()) {
      if (Small(name).find(text) != std::string::npos) keys.push_back(name);
    }
    return keys;
  }

  RegistrySandbox m_sandbox;
  const std::string m_root = "hkey_classes_root\\typelib\\{b63adc9e-1200-4e8c-95f7-bc44eb0cdd14}";
};

}  // namespace

TEST_F(TypeLibraryRegistration, NamesTheLibraryAndItsDirectory) {
  const LoadedLibrary library(ZORTUNEDEX_LIBRARY, m_sandbox);
  const std::string path = LoadedLibrary::Registered(ZORTUNEDEX_LIBRARY);
  ExpectHr(S_OK, library.Register());
  EXPECT_EQ((Values{{"", Quoted("ZorTunedex 1.0 Type Library")}}), ValuesOf(m_root + "\\1.0"));
  EXPECT_EQ((Values{{"", Quoted(path)}}), ValuesOf(m_root + "\\1.0\\0\\win64"));
  // With the separator that it is cut behind.
  EXPECT_EQ((Values{{"", Quoted(path.substr(0, path.rfind('\\') + 1))}}),
            ValuesOf(m_root + "\\1.0\\helpdir"));
  ComPtr<ITypeLib> types;
  ExpectHr(S_OK, LoadRegTypeLib(LIBID_ZORTUNEDEXLib, 1, 0, 0, types.Receive()));
}

TEST_F(TypeLibraryRegistration, NamesTheInterfaces) {
  const LoadedLibrary library(ZORTUNEDEX_LIBRARY, m_sandbox);
  ExpectHr(S_OK, library.Register());
  const std::string key = "hkey_classes_root\\interface\\{d68deb38-cc68-4bcf-9757-edd6ff66f27e}";
  EXPECT_EQ((Values{{"", Quoted("IZorTunedex")}}), ValuesOf(key));
  ExpectHr(S_OK, library.Unregister());
  EXPECT_TRUE(KeysWith("{d68deb38-cc68-4bcf-9757-edd6ff66f27e}").empty());
  EXPECT_TRUE(KeysWith("{b63adc9e-1200-4e8c-95f7-bc44eb0cdd14}").empty());
  ComPtr<ITypeLib> types;
  EXPECT_TRUE(FAILED(LoadRegTypeLib(LIBID_ZORTUNEDEXLib, 1, 0, 0, types.Receive())));
}

// What was written before the step that failed stays; registering again mends it.
TEST_F(TypeLibraryRegistration, PathsOfMoreThan260Characters) {
  const TempDir directory;
  std::string path = directory.Path();
  for (int i = 0; i < 5; ++i) path += "\\" + std::string(60, static_cast<char>('a' + i));
  path += "\\ZorTunedex.dll";
  ASSERT_GT(path.size(), 300U);
  ASSERT_TRUE(LoadedLibrary::Copy(path));
  const LoadedLibrary library(path, m_sandbox);
  ASSERT_TRUE(library.IsLoaded());
  const HRESULT hr = library.Register();
  const HRESULT reverse = library.Unregister();
  printf("register %s unregister %s\n", HrText(hr).c_str(), HrText(reverse).c_str());
  for (auto& k : m_sandbox.Read()) printf("  %s\n", k.first.c_str());
}
