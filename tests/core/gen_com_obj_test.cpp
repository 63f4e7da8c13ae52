#include "core/gen_com_obj.h"

#include <cstring>
#include <thread>
#include <vector>

#include "platform/com_ptr.h"
#include "support/expect.h"

namespace {

// The smallest of the interfaces, with hooks into construction and destruction.
class Lnb : public CGenComObj<Lnb, ILNBInfo> {
 public:
  Lnb() {
    if (failNext) {
      failNext = false;
      throw std::bad_alloc();
    }
    ++alive;
  }
  ~Lnb() override {
    --alive;
    if (!onDestruction) return;
    onDestruction = false;
    // What refers back takes and gives a reference while the object goes.
    lastAddRef = AddRef();
    lastRelease = Release();
  }

  HRESULT STDMETHODCALLTYPE GetIndex(UINT*) override { return 100; }
  HRESULT STDMETHODCALLTYPE SetIndex(UINT) override { return 101; }
  HRESULT STDMETHODCALLTYPE GetType(BSTR*) override { return 102; }
  HRESULT STDMETHODCALLTYPE SetType(BSTR) override { return 103; }
  HRESULT STDMETHODCALLTYPE GetLowFreq(DWORD*) override { return 104; }
  HRESULT STDMETHODCALLTYPE SetLowFreq(DWORD) override { return 105; }
  HRESULT STDMETHODCALLTYPE GetHighFreq(DWORD*) override { return 106; }
  HRESULT STDMETHODCALLTYPE SetHighFreq(DWORD) override { return 107; }
  HRESULT STDMETHODCALLTYPE GetSwitchFreq(DWORD*) override { return 108; }
  HRESULT STDMETHODCALLTYPE SetSwitchFreq(DWORD) override { return 109; }
  HRESULT STDMETHODCALLTYPE GetDirty(LONG*) override { return 110; }
  HRESULT STDMETHODCALLTYPE SetDirty(LONG) override { return 111; }

  static inline int alive = 0;
  static inline bool failNext = false;
  static inline bool onDestruction = false;
  static inline ULONG lastAddRef = 0;
  static inline ULONG lastRelease = 0;
};

// A class whose identity cannot be had.
class Stubborn : public CGenComObj<Stubborn, IUnknown> {
 public:
  Stubborn() { ++alive; }
  ~Stubborn() override { --alive; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  static inline int alive = 0;
};

}  // namespace

template <>
struct InterfaceId<IUnknown> {
  static constexpr IID kValue = {};
};

namespace {

TEST(GenComObj, CreationGivesExactlyOneReference) {
  ILNBInfo* object = nullptr;
  ExpectHr(S_OK, Lnb::CreateInstance(&object));
  ASSERT_NE(nullptr, object);
  ExpectRefCount(1, object);
  EXPECT_EQ(1, Lnb::alive);
  EXPECT_EQ(0u, object->Release());
  EXPECT_EQ(0, Lnb::alive);
}

TEST(GenComObj, CreationChecksItsOutPointer) {
  ExpectHr(E_POINTER, Lnb::CreateInstance(nullptr));
  EXPECT_EQ(0, Lnb::alive);
}

TEST(GenComObj, CreationWithoutMemory) {
  Lnb::failNext = true;
  ILNBInfo* const untouched = reinterpret_cast<ILNBInfo*>(std::uintptr_t{16});
  ILNBInfo* object = untouched;
  ExpectHr(E_OUTOFMEMORY, Lnb::CreateInstance(&object));
  EXPECT_EQ(untouched, object);
  EXPECT_EQ(0, Lnb::alive);
}

TEST(GenComObj, CreationDestroysWhatDoesNotAnswerItsInterface) {
  IUnknown* object = nullptr;
  ExpectHr(E_NOINTERFACE, Stubborn::CreateInstance(&object));
  EXPECT_EQ(nullptr, object);
  EXPECT_EQ(0, Stubborn::alive);
}

TEST(GenComObj, AnswersItsInterfaceAndIUnknownOnly) {
  ComPtr<ILNBInfo> object;
  ExpectHr(S_OK, Lnb::CreateInstance(object.Receive()));
  for (const IID& iid : {IID(IID_IUnknown), IID_ILNBInfo}) {
    void* found = nullptr;
    ExpectHr(S_OK, object->QueryInterface(iid, &found));
    EXPECT_EQ(static_cast<void*>(object.Get()), found);
    ExpectRefCount(2, object.Get());
    EXPECT_EQ(1u, static_cast<ILNBInfo*>(found)->Release());
  }
  for (const IID& iid :
       {IID(IID_IDispatch), IID(IID_IClassFactory), IID_ILNBInfoMgr, IID_IChannelInfo, IID{}}) {
    void* found = &object;
    ExpectHr(E_NOINTERFACE, object->QueryInterface(iid, &found));
    EXPECT_EQ(nullptr, found);
  }
  ExpectHr(E_POINTER, object->QueryInterface(IID_IUnknown, nullptr));
  ExpectHr(E_POINTER, object->QueryInterface(IID_IDispatch, nullptr));
  ExpectRefCount(1, object.Get());
}

TEST(GenComObj, MemberOfAnotherObjectKeepsTheOwnersReference) {
  {
    Lnb member;
    EXPECT_EQ(2u, member.AddRef());
    EXPECT_EQ(1u, member.Release());
    EXPECT_EQ(1, Lnb::alive);
    void* found = nullptr;
    ExpectHr(S_OK, member.QueryInterface(IID_ILNBInfo, &found));
    EXPECT_EQ(1u, member.Release());
    EXPECT_EQ(1, Lnb::alive);
  }
  EXPECT_EQ(0, Lnb::alive);
}

TEST(GenComObj, AnOwnedObjectOutlivesAReleaseTooMany) {
  ILNBInfo* object = nullptr;
  ExpectHr(S_OK, Lnb::CreateInstance(&object));
  static_cast<Lnb*>(object)->SetOwned(true);
  EXPECT_EQ(0U, object->Release());
  EXPECT_EQ(0U, object->Release());
  EXPECT_EQ(1, Lnb::alive);
  ExpectRefCount(1, object);
  static_cast<Lnb*>(object)->SetOwned(false);
  EXPECT_EQ(0U, object->Release());
  EXPECT_EQ(0, Lnb::alive);
}

TEST(GenComObj, DestructionHappensOnceAlthoughSomethingRefersBack) {
  ILNBInfo* object = nullptr;
  ExpectHr(S_OK, Lnb::CreateInstance(&object));
  Lnb::onDestruction = true;
  EXPECT_EQ(0u, object->Release());
  EXPECT_EQ(2u, Lnb::lastAddRef);
  EXPECT_EQ(1u, Lnb::lastRelease);
  EXPECT_EQ(0, Lnb::alive);
}

// The table that a host calls through: the three of IUnknown, the interface's methods in their
// order, and only then what belongs to the class.
TEST(GenComObj, DestructorStandsBehindTheInterface) {
  Lnb object;
  ILNBInfo* const face = &object;
  using Method = HRESULT(STDMETHODCALLTYPE*)(ILNBInfo*, std::uintptr_t);
  Method* table = nullptr;
  std::memcpy(&table, static_cast<const void*>(face), sizeof(table));
  for (int slot = 3; slot < 15; ++slot) EXPECT_EQ(100 + slot - 3, table[slot](face, 0)) << slot;
}

TEST(GenComObj, CountIsSafeAcrossThreads) {
  ILNBInfo* object = nullptr;
  ExpectHr(S_OK, Lnb::CreateInstance(&object));
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([object] {
      for (int i = 0; i < 2000; ++i) {
        EXPECT_GE(object->AddRef(), 2u);
        EXPECT_GE(object->Release(), 1u);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  ExpectRefCount(1, object);
  EXPECT_EQ(0u, object->Release());
  EXPECT_EQ(0, Lnb::alive);
}

// The last reference may be given up on any thread.
TEST(GenComObj, LastReleaseDestroysOnceAcrossThreads) {
  for (int round = 0; round < 200; ++round) {
    ILNBInfo* object = nullptr;
    ExpectHr(S_OK, Lnb::CreateInstance(&object));
    object->AddRef();
    std::thread other([object] { object->Release(); });
    object->Release();
    other.join();
    ASSERT_EQ(0, Lnb::alive);
  }
}

}  // namespace
