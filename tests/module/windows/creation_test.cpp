// The registered class, as the COM runtime makes it. The registry is the real one, and is as before
// afterwards.
#include "core/interfaces.h"
#include "module/loaded_library.h"
#include "platform/com_ptr.h"
#include "support/expect.h"

namespace {

constexpr IID kProxyManager = {
    0x00000008, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

class Creation : public testing::Test {
 protected:
  Creation() { ExpectHr(S_OK, m_library.Register()); }
  ~Creation() override {
    if (m_isRegistered) ExpectHr(S_OK, m_library.Unregister());
    CoFreeUnusedLibrariesEx(0, 0);
  }

  void Unregister() {
    ExpectHr(S_OK, m_library.Unregister());
    m_isRegistered = false;
  }

  static HRESULT Create(REFCLSID clsid, ComPtr<IZorTunedex>& database) {
    void* answer = nullptr;
    const HRESULT hr =
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IZorTunedex, &answer);
    database = ComPtr<IZorTunedex>::Attach(static_cast<IZorTunedex*>(answer));
    return hr;
  }

  const LoadedLibrary m_library{ZORTUNEDEX_LIBRARY};
  bool m_isRegistered = true;
};

/// An outer object of nothing but its identity.
class Outer final : public IUnknown {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
    *ppv = riid == IID_IUnknown ? this : nullptr;
    if (*ppv == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_count; }
  ULONG STDMETHODCALLTYPE Release() override { return --m_count; }

 private:
  ULONG m_count = 1;
};

}  // namespace

TEST_F(Creation, ByIdentifier) {
  ComPtr<IZorTunedex> database;
  ExpectHr(S_OK, Create(CLSID_ZorTunedex, database));
  ExpectHr(S_FALSE, m_library.CanUnload());
  EStorageType storage = StorageEncryptXML;
  ExpectHr(S_OK, database->GetStorageType(&storage));
  EXPECT_EQ(StorageXML, storage);
  database.Reset();
  ExpectHr(S_OK, m_library.CanUnload());
}

TEST_F(Creation, ByName) {
  for (const wchar_t* name : {L"ZorTunedex.ZorTunedex", L"ZorTunedex.ZorTunedex.1"}) {
    CLSID clsid = {};
    ExpectHr(S_OK, CLSIDFromProgID(name, &clsid));
    EXPECT_TRUE(clsid == CLSID_ZorTunedex) << name;
    ComPtr<IZorTunedex> database;
    ExpectHr(S_OK, Create(clsid, database));
  }
  wchar_t* name = nullptr;
  ExpectHr(S_OK, ProgIDFromCLSID(CLSID_ZorTunedex, &name));
  EXPECT_STREQ(L"ZorTunedex.ZorTunedex.1", name);
  CoTaskMemFree(name);
}

// Both kinds of apartment get the object itself and no proxy of it.
TEST_F(Creation, InASingleThreadedApartment) {
  CoUninitialize();
  ASSERT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  {
    ComPtr<IZorTunedex> database;
    ExpectHr(S_OK, Create(CLSID_ZorTunedex, database));
    void* proxy = nullptr;
    ExpectHr(E_NOINTERFACE, database->QueryInterface(kProxyManager, &proxy));
  }
  CoUninitialize();
  ASSERT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_MULTITHREADED));
}

TEST_F(Creation, AsPartOfAnotherObject) {
  Outer outer;
  void* answer = &outer;
  ExpectHr(CLASS_E_NOAGGREGATION, CoCreateInstance(CLSID_ZorTunedex, &outer, CLSCTX_INPROC_SERVER,
                                                   IID_IZorTunedex, &answer));
  EXPECT_EQ(nullptr, answer);
  ExpectHr(S_OK, m_library.CanUnload());
  ExpectHr(S_OK,
           CoCreateInstance(CLSID_ZorTunedex, &outer, CLSCTX_INPROC_SERVER, IID_IUnknown, &answer));
  ComPtr<IUnknown> inner = ComPtr<IUnknown>::Attach(static_cast<IUnknown*>(answer));
  ExpectHr(S_OK, inner->QueryInterface(IID_IZorTunedex, &answer));
  const auto database = ComPtr<IZorTunedex>::Attach(static_cast<IZorTunedex*>(answer));
  // Its references are the outer object's.
  ExpectRefCount(2, &outer);
  ExpectHr(S_OK, database->QueryInterface(IID_IUnknown, &answer));
  const auto identity = ComPtr<IUnknown>::Attach(static_cast<IUnknown*>(answer));
  EXPECT_EQ(&outer, identity.Get());
  ExpectHr(S_FALSE, m_library.CanUnload());
}

TEST_F(Creation, NotAfterUnregistering) {
  Unregister();
  CoFreeUnusedLibrariesEx(0, 0);
  ComPtr<IZorTunedex> database;
  ExpectHr(REGDB_E_CLASSNOTREG, Create(CLSID_ZorTunedex, database));
  CLSID clsid = {};
  EXPECT_TRUE(FAILED(CLSIDFromProgID(L"ZorTunedex.ZorTunedex", &clsid)));
}

TEST_F(Creation, LocksKeepTheLibrary) {
  void* answer = nullptr;
  ExpectHr(S_OK, CoGetClassObject(CLSID_ZorTunedex, CLSCTX_INPROC_SERVER, nullptr,
                                  IID_IClassFactory, &answer));
  const auto factory = ComPtr<IClassFactory>::Attach(static_cast<IClassFactory*>(answer));
  ExpectHr(S_OK, m_library.CanUnload());
  ExpectHr(S_OK, factory->LockServer(TRUE));
  ExpectHr(S_FALSE, m_library.CanUnload());
  ExpectHr(S_OK, factory->LockServer(FALSE));
  ExpectHr(S_OK, m_library.CanUnload());
}
