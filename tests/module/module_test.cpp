#include "module/module.h"

#include "core/interfaces.h"
#include "support/expect.h"

namespace {

ComPtr<IUnknown> ClassObject() {
  void* factory = nullptr;
  ExpectHr(S_OK, Module::Get().GetClassObject(CLSID_ZorTunedex, IID_IClassFactory, &factory));
  return ComPtr<IUnknown>::Attach(static_cast<IUnknown*>(factory));
}

}  // namespace

TEST(Module, KeepsTheClassObjectUntilItEnds) {
  const ComPtr<IUnknown> first = ClassObject();
  EXPECT_EQ(first.Get(), ClassObject().Get());
  ExpectRefCount(2, first.Get());
  Module::Get().Terminate();
  ExpectRefCount(1, first.Get());
  // It goes on working for a host that still holds it.
  EXPECT_NE(first.Get(), ClassObject().Get());
  Module::Get().Terminate();
}

TEST(Module, OneClassIsKnown) {
  void* factory = nullptr;
  ExpectHr(CLASS_E_CLASSNOTAVAILABLE,
           Module::Get().GetClassObject(IID_IZorTunedex, IID_IClassFactory, &factory));
  EXPECT_EQ(1U, std::size(kObjectMap));
}

TEST(CommandLine, UserIsAWordInAnyCase) {
  for (const OLECHAR* line : {OLESTR("user"), OLESTR("USER"), OLESTR("User"), OLESTR(" user "),
                              OLESTR("quiet user"), OLESTR("user\tquiet")}) {
    EXPECT_EQ(RegistrationScope::User, ScopeOf(line));
  }
  for (const OLECHAR* line :
       {OLESTR(""), OLESTR(" "), OLESTR("users"), OLESTR("use r"), OLESTR("auser"),
        OLESTR("machine"), OLESTR("\u0175ser"), OLESTR("user\u00A0")}) {
    EXPECT_EQ(RegistrationScope::Machine, ScopeOf(line));
  }
  EXPECT_EQ(RegistrationScope::Machine, ScopeOf(nullptr));
}
