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

// Wine and Windows differ in how they write these names.
std::string Small(std::string text) {
  for (char& byte : text) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
  }
  return text;
}

// Gives everybody these rights on a key below HKEY_CLASSES_ROOT, and nobody others; the key is made
// where it is missing.
void Allow(const wchar_t* path, DWORD rights) {
  HKEY key = nullptr;
  ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_CLASSES_ROOT, path, 0, nullptr, 0, WRITE_DAC,
                                           nullptr, &key, nullptr));
  SID_IDENTIFIER_AUTHORITY world = SECURITY_WORLD_SID_AUTHORITY;
  PSID everybody = nullptr;
  ASSERT_TRUE(
      AllocateAndInitializeSid(&world, 1, SECURITY_WORLD_RID, 0, 0, 0, 0, 0, 0, 0, &everybody));
  alignas(ACL) BYTE list[256];
  const auto acl = reinterpret_cast<ACL*>(list);
  SECURITY_DESCRIPTOR descriptor;
  EXPECT_TRUE(InitializeAcl(acl, sizeof(list), ACL_REVISION));
  EXPECT_TRUE(AddAccessAllowedAce(acl, ACL_REVISION, rights | WRITE_DAC, everybody));
  EXPECT_TRUE(InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION));
  EXPECT_TRUE(SetSecurityDescriptorDacl(&descriptor, TRUE, acl, FALSE));
  EXPECT_EQ(ERROR_SUCCESS, RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &descriptor));
  FreeSid(everybody);
  RegCloseKey(key);
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
  const std::string m_class = "hkey_classes_root\\clsid\\{d4fdc473-b225-4746-9983-065f8f21d798}";
  const std::string m_root = "hkey_classes_root\\typelib\\{b63adc9e-1200-4e8c-95f7-bc44eb0cdd14}";
};

}  // namespace

TEST_F(TypeLibraryRegistration, NamesTheLibraryAndItsDirectory) {
  const LoadedLibrary library(ZORTUNEDEX_LIBRARY, m_sandbox);
  const std::string path = LoadedLibrary::Registered(ZORTUNEDEX_LIBRARY);
  ExpectHr(S_OK, library.Register());
  EXPECT_EQ((Values{{"", QuotedData("ZorTunedex 1.0 Type Library")}}), ValuesOf(m_root + "\\1.0"));
  EXPECT_EQ((Values{{"", QuotedData(path)}}), ValuesOf(m_root + "\\1.0\\0\\win64"));
  // With the separator that it is cut behind.
  EXPECT_EQ((Values{{"", QuotedData(path.substr(0, path.rfind('\\') + 1))}}),
            ValuesOf(m_root + "\\1.0\\helpdir"));
  ComPtr<ITypeLib> types;
  ExpectHr(S_OK, LoadRegTypeLib(LIBID_ZORTUNEDEXLib, 1, 0, 0, types.Receive()));
}

TEST_F(TypeLibraryRegistration, NamesTheInterfaces) {
  const LoadedLibrary library(ZORTUNEDEX_LIBRARY, m_sandbox);
  ExpectHr(S_OK, library.Register());
  const std::string key = "hkey_classes_root\\interface\\{d68deb38-cc68-4bcf-9757-edd6ff66f27e}";
  EXPECT_EQ((Values{{"", QuotedData("IZorTunedex")}}), ValuesOf(key));
  ExpectHr(S_OK, library.Unregister());
  EXPECT_TRUE(KeysWith("{d68deb38-cc68-4bcf-9757-edd6ff66f27e}").empty());
  EXPECT_TRUE(KeysWith("{b63adc9e-1200-4e8c-95f7-bc44eb0cdd14}").empty());
  ComPtr<ITypeLib> types;
  EXPECT_TRUE(FAILED(LoadRegTypeLib(LIBID_ZORTUNEDEXLib, 1, 0, 0, types.Receive())));
}

// The platform takes no type library from such a path. What was written before that step stays; the
// class can be used, and goes on unregistering.
TEST_F(TypeLibraryRegistration, PathsOfMoreThan260Characters) {
  const TempDir directory;
  std::string path = directory.Path();
  for (int i = 0; i < 5; ++i) path += "\\" + std::string(60, static_cast<char>('a' + i));
  path += "\\ZorTunedex.dll";
  ASSERT_GT(path.size(), 300U);
  ASSERT_TRUE(LoadedLibrary::Copy(path));
  const LoadedLibrary library(path, m_sandbox);
  ASSERT_TRUE(library.IsLoaded());
  ExpectHr(TYPE_E_CANTLOADLIBRARY, library.Register());
  EXPECT_EQ(
      (Values{{"", QuotedData(LoadedLibrary::Registered(path))}, {"ThreadingModel", "\"Both\""}}),
      ValuesOf(m_class + "\\inprocserver32"));
  EXPECT_EQ((Values{{"missing", m_root}}), ValuesOf(m_root));
  ExpectHr(TYPE_E_CANTLOADLIBRARY, library.Unregister());
  EXPECT_EQ((RegistrySandbox::Contents{{"HKEY_CLASSES_ROOT\\CLSID", {}}}), m_sandbox.Read());
}

TEST_F(TypeLibraryRegistration, WithoutRights) {
  const LoadedLibrary library(ZORTUNEDEX_LIBRARY, m_sandbox);
  Allow(L"ZorTunedex.ZorTunedex", KEY_READ | DELETE);
  ExpectHr(E_ACCESSDENIED, library.Register());
  // The steps before the one that failed were done, those behind it were not.
  EXPECT_EQ((Values{{"", "\"ZorTunedex Class\""}}),
            ValuesOf("hkey_classes_root\\zortunedex.zortunedex.1"));
  EXPECT_EQ(Values{}, ValuesOf("hkey_classes_root\\zortunedex.zortunedex"));
  EXPECT_EQ((Values{{"missing", m_class}}), ValuesOf(m_class));
  EXPECT_EQ((Values{{"missing", m_root}}), ValuesOf(m_root));
  EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyW(HKEY_CLASSES_ROOT, L"ZorTunedex.ZorTunedex"));
}

// What could not be taken out goes once the rights are there, and a foreign key stays all the time.
TEST_F(TypeLibraryRegistration, UnregisteringWithoutRights) {
  const LoadedLibrary library(ZORTUNEDEX_LIBRARY, m_sandbox);
  const std::string name = "hkey_classes_root\\zortunedex.zortunedex";
  ExpectHr(S_OK, library.Register());
  // Wine deletes a key without asking for the right, but none with a key below.
  ExpectHr(S_OK, registry::SetText(registry::Root::ClassesRoot, "ZorTunedex.ZorTunedex\\shell", "",
                                   "foreign"));
  Allow(L"ZorTunedex.ZorTunedex", KEY_READ);
  ExpectHr(E_ACCESSDENIED, library.Unregister());
  EXPECT_EQ((Values{{"", "\"ZorTunedex Class\""}}), ValuesOf(name));
  EXPECT_EQ((Values{{"", "\"foreign\""}}), ValuesOf(name + "\\shell"));
  EXPECT_EQ((Values{{"", "\"ZorTunedex Class\""}}), ValuesOf(m_class));
  EXPECT_EQ(Values{}, ValuesOf(m_root));
  Allow(L"ZorTunedex.ZorTunedex", KEY_ALL_ACCESS);
  ExpectHr(S_FALSE, library.Unregister());
  EXPECT_EQ(2U, KeysWith("zortunedex").size());
  EXPECT_EQ((Values{{"", "\"foreign\""}}), ValuesOf(name + "\\shell"));
  EXPECT_EQ((Values{{"missing", m_class}}), ValuesOf(m_class));
  EXPECT_EQ((Values{{"missing", m_root}}), ValuesOf(m_root));
}
