// The built library registers itself: in the registry of Windows, or in the file that stands for
// it. What belongs to the type library is looked at elsewhere.
#include "core/interfaces.h"
#include "module/loaded_library.h"
#include "platform/registry.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

using Contents = RegistrySandbox::Contents;
using registry::Root;

const std::string kClassId = "{D4FDC473-B225-4746-9983-065F8F21D798}";
const std::string kClassesRoot = "HKEY_CLASSES_ROOT";
const std::string kUserClasses = "HKEY_CURRENT_USER\\Software\\Classes";

// What stands in the registry for the class, below `root`.
Contents ClassKeys(const std::string& root, const std::string& path) {
  const std::string classKey = root + "\\CLSID\\" + kClassId;
  const std::string name = QuotedData("ZorTunedex Class");
  const std::string plain = root + "\\ZorTunedex.ZorTunedex";
  return {
      {plain, {{"", name}}},
      {plain + "\\CLSID", {{"", QuotedData(kClassId)}}},
      {plain + "\\CurVer", {{"", QuotedData("ZorTunedex.ZorTunedex.1")}}},
      {plain + ".1", {{"", name}}},
      {plain + ".1\\CLSID", {{"", QuotedData(kClassId)}}},
      {root + "\\CLSID", {}},
      {classKey, {{"", name}}},
      {classKey + "\\InprocServer32",
       {{"", QuotedData(path)}, {"ThreadingModel", QuotedData("Both")}}},
      {classKey + "\\ProgID", {{"", QuotedData("ZorTunedex.ZorTunedex.1")}}},
      {classKey + "\\Programmable", {}},
      {classKey + "\\TypeLib", {{"", QuotedData("{B63ADC9E-1200-4E8C-95F7-BC44EB0CDD14}")}}},
      {classKey + "\\VersionIndependentProgID", {{"", QuotedData("ZorTunedex.ZorTunedex")}}},
  };
}

class Registration : public testing::Test {
 protected:
  // Everything but what registering a type library writes, and the keys that lead there.
  Contents ClassContents() const {
    Contents contents = m_sandbox.Read();
    for (const std::string& root : {kClassesRoot, kUserClasses}) {
      // Wine's spelling differs in case.
      for (const char* name : {"\\TypeLib", "\\Typelib", "\\Interface"}) {
        std::erase_if(contents, [&](const auto& entry) {
          return entry.first == root + name || entry.first.starts_with(root + name + '\\');
        });
      }
    }
    contents.erase("HKEY_CURRENT_USER\\Software");
    contents.erase(kUserClasses);
    return contents;
  }
  // Unregisters where no type library is registered.
  void UnregisterMore(HRESULT expected) const {
    const HRESULT hr = m_library.Unregister();
    if (LoadedLibrary::kHasTypeLibrary) {
      EXPECT_TRUE(FAILED(hr)) << HrText(hr);
    } else {
      ExpectHr(expected, hr);
    }
  }
  static void Set(const std::string& key, const std::string& value) {
    ExpectHr(S_OK, registry::SetText(Root::ClassesRoot, key, "", value));
  }

  RegistrySandbox m_sandbox;
  const std::string m_path = ZORTUNEDEX_LIBRARY;
  const std::string m_registered = LoadedLibrary::Registered(m_path);
  const LoadedLibrary m_library{m_path, m_sandbox};
};

const Contents kNothing = {{kClassesRoot + "\\CLSID", {}}};

}  // namespace

TEST_F(Registration, WritesTheClass) {
  ASSERT_TRUE(m_library.IsLoaded());
  ExpectHr(S_OK, m_library.Register());
  EXPECT_EQ(ClassKeys(kClassesRoot, m_registered), ClassContents());
  ExpectHr(S_OK, m_library.Register());
  EXPECT_EQ(ClassKeys(kClassesRoot, m_registered), ClassContents());
}

TEST_F(Registration, LeavesNothingBehind) {
  Set("CLSID\\{00000000-0000-0000-0000-000000000001}", "another class");
  const Contents before = m_sandbox.Read();
  ExpectHr(S_OK, m_library.Register());
  ExpectHr(S_OK, m_library.Unregister());
  EXPECT_EQ(before, ClassContents());
}

TEST_F(Registration, UnregistersTwice) {
  UnregisterMore(S_OK);
  EXPECT_EQ(Contents(), ClassContents());
  ExpectHr(S_OK, m_library.Register());
  ExpectHr(S_OK, m_library.Unregister());
  EXPECT_EQ(kNothing, ClassContents());
  UnregisterMore(S_OK);
  EXPECT_EQ(kNothing, ClassContents());
}

TEST_F(Registration, MendsAHalfRegisteredState) {
  Set("CLSID\\" + kClassId + "\\InprocServer32", "C:\\gone\\old.dll");
  Set("ZorTunedex.ZorTunedex", "an older name");
  ExpectHr(S_OK, m_library.Register());
  EXPECT_EQ(ClassKeys(kClassesRoot, m_registered), ClassContents());
}

TEST_F(Registration, TakesOutAHalfRegisteredState) {
  Set("CLSID\\" + kClassId + "\\InprocServer32", "C:\\gone\\old.dll");
  Set("ZorTunedex.ZorTunedex\\CurVer", "ZorTunedex.ZorTunedex.1");
  UnregisterMore(S_OK);
  EXPECT_EQ(kNothing, ClassContents());
}

TEST_F(Registration, ForeignKeysBelowTheClassNameStay) {
  ExpectHr(S_OK, m_library.Register());
  Set("ZorTunedex.ZorTunedex\\shell\\open", "another program's");
  ExpectHr(S_FALSE, m_library.Unregister());
  const std::string name = kClassesRoot + "\\ZorTunedex.ZorTunedex";
  Contents expected = kNothing;
  expected[name];
  expected[name + "\\shell"];
  expected[name + "\\shell\\open"] = {{"", QuotedData("another program's")}};
  EXPECT_EQ(expected, ClassContents());
  UnregisterMore(S_FALSE);
  EXPECT_EQ(expected, ClassContents());
}

// The class identifier's key is the component's own as a whole.
TEST_F(Registration, TheClassKeyGoesAsAWhole) {
  ExpectHr(S_OK, m_library.Register());
  Set("CLSID\\" + kClassId + "\\Elevation", "another program's");
  ExpectHr(S_OK, m_library.Unregister());
  EXPECT_EQ(kNothing, ClassContents());
}

TEST_F(Registration, ForOneUser) {
  ExpectHr(S_OK, m_library.Install(true, OLESTR("USER")));
  EXPECT_EQ(ClassKeys(kUserClasses, m_registered), ClassContents());
  ExpectHr(S_OK, m_library.Install(false, OLESTR("user")));
  EXPECT_EQ((Contents{{kUserClasses + "\\CLSID", {}}}), ClassContents());
}

TEST_F(Registration, InstallWithoutAWordIsForAll) {
  ExpectHr(S_OK, m_library.Install(true, nullptr));
  EXPECT_EQ(ClassKeys(kClassesRoot, m_registered), ClassContents());
  ExpectHr(S_OK, m_library.Install(false, OLESTR("")));
  EXPECT_EQ(kNothing, ClassContents());
}

// A registration for one user does not turn the next one of the process into another.
TEST_F(Registration, ScopesAreIndependent) {
  ExpectHr(S_OK, m_library.Install(true, OLESTR("user")));
  ExpectHr(S_OK, m_library.Register());
  Contents expected = ClassKeys(kClassesRoot, m_registered);
  expected.merge(ClassKeys(kUserClasses, m_registered));
  EXPECT_EQ(expected, ClassContents());
  ExpectHr(S_OK, m_library.Unregister());
  expected = kNothing;
  expected.merge(ClassKeys(kUserClasses, m_registered));
  EXPECT_EQ(expected, ClassContents());
}

TEST_F(Registration, FromPathsThatNeedCare) {
  const TempDir directory;
  for (const char* name :
       {"with space", "it's ''quoted''", "percent %MODULE% 100%", "{ brace } = s",
        "Z\xC3\xBCrich \xE6\xBC\xA2\xE5\xAD\x97 \xF0\x9F\x93\xBA"}) {
    const std::string path = directory.Path() + "/" + name + "/lib " + name + ".dll";
    ASSERT_TRUE(LoadedLibrary::Copy(path)) << name;
    const LoadedLibrary library(path, m_sandbox);
    ASSERT_TRUE(library.IsLoaded()) << name;
    ExpectHr(S_OK, library.Register());
    EXPECT_EQ(ClassKeys(kClassesRoot, LoadedLibrary::Registered(path)), ClassContents());
    ExpectHr(S_OK, library.Unregister());
    EXPECT_EQ(kNothing, ClassContents()) << name;
  }
}
