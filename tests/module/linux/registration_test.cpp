// What belongs to the file that stands for the registry.
//
// Linux only: only there does a file stand for the registry
#include <sys/stat.h>

#include <filesystem>

#include "module/loaded_library.h"
#include "platform/com.h"
#include "platform/library.h"
#include "support/expect.h"
#include "support/linux/child.h"
#include "support/temp_dir.h"

namespace {

// The entry points of this program, which is linked with the library's objects.
class RegistrationFile : public testing::Test {
 protected:
  RegistrationFile() {
    std::filesystem::permissions(m_directory.Path(), std::filesystem::perms(0777));
  }
  ~RegistrationFile() override { ZorTunedexSetRegistryFile(nullptr); }

  TempDir m_directory;
};

constexpr char kForeign[] =
    "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CLASSES_ROOT\\CLSID\\{1}]\r\n@=\"x\"\r\n";

}  // namespace

TEST_F(RegistrationFile, WithoutOneEveryStepFails) {
  ExpectHr(S_OK, ZorTunedexSetRegistryFile(nullptr));
  ExpectHr(E_FAIL, DllRegisterServer());
  ExpectHr(E_FAIL, DllUnregisterServer());
  ExpectHr(E_FAIL, DllInstall(1, nullptr));
  ExpectHr(E_FAIL, DllInstall(0, u"user"));
}

TEST_F(RegistrationFile, IsMadeByRegistering) {
  const std::string file = m_directory.File("machine.reg");
  ExpectHr(S_OK, ZorTunedexSetRegistryFile(file.c_str()));
  ExpectHr(S_OK, DllUnregisterServer());
  EXPECT_EQ(0U, m_directory.Count());
  ExpectHr(S_OK, DllRegisterServer());
  EXPECT_EQ(1U, m_directory.Count());
}

TEST_F(RegistrationFile, WithoutRightsNothingChanges) {
  m_directory.Write("machine.reg", kForeign);
  const std::string file = m_directory.File("machine.reg");
  ASSERT_EQ(0, chmod(file.c_str(), 0444));
  ExpectHr(S_OK, ZorTunedexSetRegistryFile(file.c_str()));
  EXPECT_TRUE(
      AsNobody([] { return DllRegisterServer() == E_FAIL && DllInstall(1, u"user") == E_FAIL; }));
  EXPECT_EQ(kForeign, m_directory.Read("machine.reg"));
  EXPECT_EQ(1U, m_directory.Count());
}

TEST_F(RegistrationFile, InADirectoryWithoutRights) {
  const std::string file = m_directory.File("machine.reg");
  ASSERT_EQ(0, chmod(m_directory.Path().c_str(), 0555));
  ExpectHr(S_OK, ZorTunedexSetRegistryFile(file.c_str()));
  EXPECT_TRUE(AsNobody([] { return DllRegisterServer() == E_FAIL; }));
  ASSERT_EQ(0, chmod(m_directory.Path().c_str(), 0755));
  EXPECT_EQ(0U, m_directory.Count());
}

TEST_F(RegistrationFile, ThatIsNoneStaysAsItIs) {
  m_directory.Write("machine.reg", "something else");
  ExpectHr(S_OK, ZorTunedexSetRegistryFile(m_directory.File("machine.reg").c_str()));
  ExpectHr(E_FAIL, DllRegisterServer());
  ExpectHr(E_FAIL, DllUnregisterServer());
  EXPECT_EQ("something else", m_directory.Read("machine.reg"));
}

TEST_F(RegistrationFile, TheScriptIsTheLibrarysOwn) {
  std::ifstream file(ZORTUNEDEX_SOURCE "/module/ZorTunedex.rgs", std::ios::binary);
  const std::string script{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  EXPECT_FALSE(script.empty());
  EXPECT_EQ(script, library::RegistryScript());
}

// A name that the registry cannot hold would lead elsewhere.
TEST_F(RegistrationFile, PathsThatAreNoText) {
  const RegistrySandbox sandbox;
  const std::string path = m_directory.Path() + "/Z\xFCrich.so";
  ASSERT_TRUE(LoadedLibrary::Copy(path));
  const LoadedLibrary library(path, sandbox);
  ASSERT_TRUE(library.IsLoaded());
  ExpectHr(E_FAIL, library.Register());
  EXPECT_TRUE(sandbox.Read().empty());
}

TEST_F(RegistrationFile, LongPathsAndDoubleQuotes) {
  const RegistrySandbox sandbox;
  std::string path = m_directory.Path();
  for (int i = 0; i < 6; ++i) path += "/" + std::string(60, static_cast<char>('a' + i)) + "\"";
  path += "/lib\\.so";
  ASSERT_GT(path.size(), 360U);
  ASSERT_TRUE(LoadedLibrary::Copy(path));
  const LoadedLibrary library(path, sandbox);
  ASSERT_TRUE(library.IsLoaded());
  ExpectHr(S_OK, library.Register());
  std::string quoted = "\"";
  for (const char byte : path) {
    if (byte == '"' || byte == '\\') quoted += '\\';
    quoted += byte;
  }
  quoted += '"';
  EXPECT_EQ(quoted, sandbox.Read()["HKEY_CLASSES_ROOT\\CLSID\\{D4FDC473-B225-4746-9983-"
                                   "065F8F21D798}\\InprocServer32"][""]);
  ExpectHr(S_OK, library.Unregister());
}
