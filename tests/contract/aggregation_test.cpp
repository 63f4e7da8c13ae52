// The database as a part of another object.
#include <atomic>

#include "contract/database.h"
#include "platform/host.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

// Holds a database, answers IUnknown itself and hands every other question on.
class Outer final : public IUnknown {
 public:
  explicit Outer(bool& gone) : m_gone(gone) {}
  Outer(const Outer&) = delete;
  Outer& operator=(const Outer&) = delete;

  HRESULT Create() {
    void* inner = nullptr;
    const HRESULT hr = GetFactory()->CreateInstance(this, IID_IUnknown, &inner);
    m_inner = ComPtr<IUnknown>::Attach(static_cast<IUnknown*>(inner));
    return hr;
  }
  IUnknown* Inner() const { return m_inner.Get(); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    if (ppvObject == nullptr) return E_POINTER;
    if (!(riid == IID_IUnknown)) return m_inner->QueryInterface(riid, ppvObject);
    *ppvObject = static_cast<IUnknown*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_count; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG count = --m_count;
    if (count == 0) {
      m_count = 1;
      delete this;
    }
    return count;
  }

 private:
  ~Outer() { m_gone = true; }

  bool& m_gone;
  std::atomic<ULONG> m_count{1};
  ComPtr<IUnknown> m_inner;
};

class Aggregation : public testing::Test {
 protected:
  Aggregation() : m_outer(ComPtr<Outer>::Attach(new Outer(m_gone))) {
    ExpectHr(S_OK, m_outer->Create());
  }

  ComPtr<IZorTunedex> Database() {
    void* database = nullptr;
    ExpectHr(S_OK, m_outer->QueryInterface(IID_IZorTunedex, &database));
    return ComPtr<IZorTunedex>::Attach(static_cast<IZorTunedex*>(database));
  }

  bool m_gone = false;
  ComPtr<Outer> m_outer;
};

}  // namespace

TEST(AggregationRule, OnlyIUnknownMayBeAskedFor) {
  bool gone = false;
  const auto outer = ComPtr<Outer>::Attach(new Outer(gone));
  const ComPtr<IClassFactory> factory = GetFactory();
  for (const IID& iid : {IID_IZorTunedex, IID_IDispatch, IID_IClassFactory}) {
    void* answer = outer.Get();
    ExpectHr(CLASS_E_NOAGGREGATION, factory->CreateInstance(outer.Get(), iid, &answer));
    EXPECT_EQ(nullptr, answer);
  }
  ExpectHr(E_POINTER, factory->CreateInstance(outer.Get(), IID_IZorTunedex, nullptr));
  ExpectHr(S_OK, host::CanUnloadNow());
}

TEST_F(Aggregation, TheOuterObjectIsTheIdentity) {
  const ComPtr<IZorTunedex> database = Database();
  void* identity = nullptr;
  ExpectHr(S_OK, database->QueryInterface(IID_IUnknown, &identity));
  EXPECT_EQ(static_cast<IUnknown*>(m_outer.Get()), identity);
  static_cast<IUnknown*>(identity)->Release();
  void* again = nullptr;
  ExpectHr(S_OK, database->QueryInterface(IID_IZorTunedex, &again));
  EXPECT_EQ(database.Get(), again);
  static_cast<IUnknown*>(again)->Release();
  EXPECT_NE(static_cast<IUnknown*>(m_outer.Get()), m_outer->Inner());
}

TEST_F(Aggregation, TheInnerIUnknownIsItsOwn) {
  void* own = nullptr;
  ExpectHr(S_OK, m_outer->Inner()->QueryInterface(IID_IUnknown, &own));
  EXPECT_EQ(m_outer->Inner(), own);
  EXPECT_EQ(1U, static_cast<IUnknown*>(own)->Release());
  ExpectRefCount(1, m_outer->Inner());
  ExpectRefCount(1, m_outer.Get());
}

TEST_F(Aggregation, ReferencesAreTheOuterObjects) {
  ExpectRefCount(1, m_outer.Get());
  const ComPtr<IZorTunedex> database = Database();
  ExpectRefCount(2, m_outer.Get());
  EXPECT_EQ(3U, database->AddRef());
  EXPECT_EQ(2U, database->Release());
  ExpectRefCount(1, m_outer->Inner());
}

TEST_F(Aggregation, WhatNeitherAnswersIsRefused) {
  void* answer = m_outer.Get();
  ExpectHr(E_NOINTERFACE, m_outer->QueryInterface(IID_IDispatch, &answer));
  EXPECT_EQ(nullptr, answer);
  const ComPtr<IZorTunedex> database = Database();
  answer = m_outer.Get();
  ExpectHr(E_NOINTERFACE, database->QueryInterface(IID_IDispatch, &answer));
  EXPECT_EQ(nullptr, answer);
  ExpectHr(E_POINTER, database->QueryInterface(IID_IZorTunedex, nullptr));
}

TEST_F(Aggregation, WorksAndGoesWithTheOuterObject) {
  ExpectHr(S_FALSE, host::CanUnloadNow());
  ComPtr<IZorTunedex> database = Database();
  const TempDir directory;
  ExpectHr(S_OK, database->Open(PathText(directory.Path()).Get(), kGermany, InputSignalFMRadio));
  EXPECT_TRUE(ListOf(database, InputSignalFMRadio));
  // The last reference may be one on the part.
  m_outer.Reset();
  EXPECT_FALSE(m_gone);
  EXPECT_EQ(0U, database.Detach()->Release());
  EXPECT_TRUE(m_gone);
  ExpectHr(S_OK, host::CanUnloadNow());
}
