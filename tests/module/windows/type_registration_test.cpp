// Which function of OLE Automation registers the type library: systems differ in what they have.
#include "platform/windows/component/type_registration.h"

#include <vector>

#include "core/interfaces.h"
#include "module/loaded_library.h"
#include "platform/com_ptr.h"
#include "platform/text.h"
#include "support/expect.h"

namespace {

constexpr HRESULT kAnswer = 42;
const std::wstring kHelp = L"C:\\somewhere\\";

std::vector<std::string> asked;
// What the functions for one user were called with.
std::vector<std::wstring> texts;
GUID identifier;
std::vector<unsigned> numbers;

HRESULT __stdcall RegisterForUser(ITypeLib*, OLECHAR* path, OLECHAR* helpDirectory) {
  texts = {path, helpDirectory};
  return kAnswer;
}
HRESULT __stdcall UnRegisterForUser(REFGUID id, WORD major, WORD minor, LCID lcid, SYSKIND kind) {
  identifier = id;
  numbers = {major, minor, lcid, static_cast<unsigned>(kind)};
  return kAnswer;
}

void* FindBoth(const char* name) {
  asked.emplace_back(name);
  if (asked.back() == "RegisterTypeLibForUser") return reinterpret_cast<void*>(RegisterForUser);
  if (asked.back() == "UnRegisterTypeLibForUser") return reinterpret_cast<void*>(UnRegisterForUser);
  return nullptr;
}
void* FindNone(const char* name) {
  asked.emplace_back(name);
  return nullptr;
}

class TypeRegistration : public testing::Test {
 protected:
  TypeRegistration() {
    asked.clear();
    texts.clear();
    numbers.clear();
    identifier = {};
    ExpectHr(S_OK, LoadTypeLibEx(m_path.c_str(), REGKIND_NONE, m_types.Receive()));
  }

  HRESULT Register(bool forUser, type_registration::Finder find) const {
    return type_registration::Register(m_types.Get(), m_path, kHelp, forUser, find);
  }
  HRESULT Unregister(bool forUser, type_registration::Finder find) const {
    return type_registration::Unregister(m_types.Get(), forUser, find);
  }
  // Of the type library that is registered for all users; empty where none is.
  std::wstring PathForAll() const {
    wchar_t path[MAX_PATH] = {};
    LONG size = sizeof(path);
    const std::wstring key = L"TypeLib\\{B63ADC9E-1200-4E8C-95F7-BC44EB0CDD14}\\1.0\\0\\win64";
    RegQueryValueW(HKEY_CLASSES_ROOT, key.c_str(), path, &size);
    return path;
  }

  const RegistrySandbox m_sandbox;
  const std::wstring m_path{text::FromUtf8(LoadedLibrary::Registered(ZORTUNEDEX_LIBRARY)).View()};
  ComPtr<ITypeLib> m_types;
};

}  // namespace

TEST_F(TypeRegistration, ForOneUserWhereTheSystemCan) {
  ExpectHr(kAnswer, Register(true, FindBoth));
  EXPECT_EQ((std::vector<std::wstring>{m_path, kHelp}), texts);
  ExpectHr(kAnswer, Unregister(true, FindBoth));
  EXPECT_TRUE(identifier == LIBID_ZORTUNEDEXLib);
  EXPECT_EQ((std::vector<unsigned>{1, 0, 0, SYS_WIN64}), numbers);
  EXPECT_EQ((std::vector<std::string>{"RegisterTypeLibForUser", "UnRegisterTypeLibForUser"}),
            asked);
  // The functions for all users were not called besides.
  EXPECT_EQ(L"", PathForAll());
}

TEST_F(TypeRegistration, ForAllUsersWhereItCannot) {
  ExpectHr(S_OK, Register(true, FindNone));
  EXPECT_EQ(m_path, PathForAll());
  ExpectHr(S_OK, Unregister(true, FindNone));
  EXPECT_EQ(L"", PathForAll());
  EXPECT_EQ((std::vector<std::string>{"RegisterTypeLibForUser", "UnRegisterTypeLibForUser"}),
            asked);
}

TEST_F(TypeRegistration, ForAllUsersLooksNothingUp) {
  ExpectHr(S_OK, Register(false, FindBoth));
  EXPECT_EQ(m_path, PathForAll());
  ExpectHr(S_OK, Unregister(false, FindBoth));
  EXPECT_EQ(L"", PathForAll());
  EXPECT_TRUE(asked.empty());
  EXPECT_TRUE(texts.empty());
}

TEST_F(TypeRegistration, LooksIntoOleAutomation) {
  const HMODULE automation = GetModuleHandleW(L"oleaut32.dll");
  for (const char* name : {"RegisterTypeLibForUser", "UnRegisterTypeLibForUser"}) {
    EXPECT_EQ(reinterpret_cast<void*>(GetProcAddress(automation, name)),
              type_registration::FindAutomation(name));
    EXPECT_NE(nullptr, type_registration::FindAutomation(name));
  }
  EXPECT_EQ(nullptr, type_registration::FindAutomation("RegisterTypeLibForNobody"));
}
