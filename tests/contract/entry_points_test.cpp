// The entry points, the class object and the identity of what it makes.
#include "contract/database.h"
#include "platform/host.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

constexpr IID kIidMarshal = {
    0x00000003, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr IID kIidPersist = {
    0x0000010C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr CLSID kOtherClass = {
    0xD4FDC473, 0xB225, 0x4746, {0x99, 0x83, 0x06, 0x5F, 0x8F, 0x21, 0xD7, 0x99}};

// Not null, so that "was set to null" can be seen.
void* Mark() {
  static int mark;
  return &mark;
}

ComPtr<IUnknown> Ask(IUnknown* object, REFIID riid) {
  void* answer = nullptr;
  ExpectHr(S_OK, object->QueryInterface(riid, &answer));
  return ComPtr<IUnknown>::Attach(static_cast<IUnknown*>(answer));
}

void ExpectRefused(IUnknown* object, REFIID riid,
                   std::source_location where = std::source_location::current()) {
  void* answer = Mark();
  ExpectHr(E_NOINTERFACE, object->QueryInterface(riid, &answer), where);
  EXPECT_EQ(nullptr, answer) << where.line();
}

// What every object of the library answers and refuses.
void ExpectIdentity(IUnknown* object, REFIID own,
                    std::source_location where = std::source_location::current()) {
  const ComPtr<IUnknown> identity = Ask(object, IID_IUnknown);
  EXPECT_EQ(identity.Get(), Ask(Ask(object, own).Get(), IID_IUnknown).Get()) << where.line();
  EXPECT_EQ(identity.Get(), Ask(identity.Get(), IID_IUnknown).Get()) << where.line();
  EXPECT_EQ(static_cast<void*>(object), static_cast<void*>(Ask(identity.Get(), own).Get()))
      << where.line();
  ExpectRefused(object, IID_IDispatch, where);
  ExpectRefused(object, kIidMarshal, where);
  ExpectRefused(object, kIidPersist, where);
  ExpectRefused(identity.Get(), IID_IDispatch, where);
  ExpectHr(E_POINTER, object->QueryInterface(IID_IUnknown, nullptr), where);
  ExpectHr(E_POINTER, object->QueryInterface(IID_IDispatch, nullptr), where);
}

}  // namespace

TEST(EntryPoints, ClassObject) {
  host::Prepare();
  void* answer = Mark();
  ExpectHr(CLASS_E_CLASSNOTAVAILABLE,
           host::GetClassObject(kOtherClass, IID_IClassFactory, &answer));
  EXPECT_EQ(nullptr, answer);
  ExpectHr(E_POINTER, host::GetClassObject(CLSID_ZorTunedex, IID_IClassFactory, nullptr));
  ExpectHr(E_POINTER, host::GetClassObject(kOtherClass, IID_IClassFactory, nullptr));
  answer = Mark();
  ExpectHr(E_NOINTERFACE, host::GetClassObject(CLSID_ZorTunedex, IID_IZorTunedex, &answer));
  EXPECT_EQ(nullptr, answer);
}

TEST(EntryPoints, ClassObjectIsMadeOnce) { EXPECT_EQ(GetFactory().Get(), GetFactory().Get()); }

TEST(EntryPoints, CanUnloadWhenNothingIsLeft) {
  const ComPtr<IClassFactory> factory = GetFactory();
  // References on the class object do not count.
  ExpectHr(S_OK, host::CanUnloadNow());
  ComPtr<IZorTunedex> first = NewDatabase();
  ExpectHr(S_FALSE, host::CanUnloadNow());
  ComPtr<IZorTunedex> second = NewDatabase();
  first.Reset();
  ExpectHr(S_FALSE, host::CanUnloadNow());
  second.Reset();
  ExpectHr(S_OK, host::CanUnloadNow());
}

TEST(EntryPoints, LocksKeepTheLibrary) {
  const ComPtr<IClassFactory> factory = GetFactory();
  ExpectHr(S_OK, factory->LockServer(1));
  ExpectHr(S_FALSE, host::CanUnloadNow());
  ExpectHr(S_OK, factory->LockServer(2));
  ExpectHr(S_OK, factory->LockServer(0));
  ExpectHr(S_FALSE, host::CanUnloadNow());
  ExpectHr(S_OK, factory->LockServer(0));
  ExpectHr(S_OK, host::CanUnloadNow());
}

TEST(ClassFactory, Identity) {
  const ComPtr<IClassFactory> factory = GetFactory();
  ExpectIdentity(factory.Get(), IID_IClassFactory);
  ExpectRefused(factory.Get(), IID_IZorTunedex);
}

TEST(ClassFactory, ReferenceCounts) {
  const ComPtr<IClassFactory> factory = GetFactory();
  const ULONG count = factory->AddRef();
  EXPECT_EQ(count + 1, factory->AddRef());
  EXPECT_EQ(count, factory->Release());
  EXPECT_EQ(count - 1, factory->Release());
}

TEST(ClassFactory, CreateInstance) {
  const ComPtr<IClassFactory> factory = GetFactory();
  ExpectHr(E_POINTER, factory->CreateInstance(nullptr, IID_IZorTunedex, nullptr));
  void* answer = Mark();
  ExpectHr(E_NOINTERFACE, factory->CreateInstance(nullptr, IID_IChannelInfo, &answer));
  EXPECT_EQ(nullptr, answer);
  answer = Mark();
  ExpectHr(E_NOINTERFACE, factory->CreateInstance(nullptr, IID_IDispatch, &answer));
  EXPECT_EQ(nullptr, answer);
  // What could not be handed out is gone.
  ExpectHr(S_OK, host::CanUnloadNow());
  ExpectHr(S_OK, factory->CreateInstance(nullptr, IID_IUnknown, &answer));
  const auto object = ComPtr<IUnknown>::Attach(static_cast<IUnknown*>(answer));
  ExpectRefCount(1, object.Get());
  ExpectHr(S_FALSE, host::CanUnloadNow());
}

TEST(Identity, Database) {
  const ComPtr<IZorTunedex> database = NewDatabase();
  ExpectRefCount(1, database.Get());
  ExpectIdentity(database.Get(), IID_IZorTunedex);
  ExpectRefused(database.Get(), IID_IClassFactory);
  ExpectRefused(database.Get(), IID_IChannelInfoMgr);
  ExpectRefCount(1, database.Get());
  EXPECT_EQ(2U, database->AddRef());
  EXPECT_EQ(1U, database->Release());
}

TEST(Identity, ListAndChannel) {
  const TempDir directory;
  const ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), InputSignalFMRadio);
  const ComPtr<IChannelInfoMgr> list = ListOf(database, InputSignalFMRadio);
  ExpectIdentity(list.Get(), IID_IChannelInfoMgr);
  ExpectRefused(list.Get(), IID_IChannelInfo);
  ExpectRefused(list.Get(), IID_IZorTunedex);
  // The database's own and ours.
  ExpectRefCount(2, list.Get());
  ComPtr<IChannelInfo> channel;
  ExpectHr(S_OK, list->CreateChannelInfo(channel.Receive()));
  ExpectRefCount(1, channel.Get());
  ExpectIdentity(channel.Get(), IID_IChannelInfo);
  ExpectRefused(channel.Get(), IID_IChannelInfoMgr);
  ExpectHr(S_OK, list->AddChannelInfo(channel.Get()));
  ExpectRefCount(2, channel.Get());
}

// Records and lists do not keep the library loaded; a host that lets it go lets them go first.
TEST(Identity, OnlyDatabasesCountAsObjects) {
  const TempDir directory;
  ComPtr<IZorTunedex> database = OpenDatabase(directory.Path(), InputSignalFMRadio);
  const ComPtr<IChannelInfoMgr> list = ListOf(database, InputSignalFMRadio);
  EXPECT_EQ(0U, database.Detach()->Release());
  ExpectHr(S_OK, host::CanUnloadNow());
  ExpectRefCount(1, list.Get());
}
