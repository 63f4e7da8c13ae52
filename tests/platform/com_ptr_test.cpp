#include "platform/com_ptr.h"

#include <gtest/gtest.h>

#include "support/expect.h"

namespace {

/// Counts its references and lives on the stack.
class Counted : public IUnknown {
 public:
  virtual ~Counted() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_count; }
  ULONG STDMETHODCALLTYPE Release() override { return --m_count; }

  ULONG m_count = 0;
};

TEST(ComPtr, HoldsOneReferenceOfItsOwn) {
  Counted object;
  {
    const ComPtr<Counted> pointer(&object);
    EXPECT_EQ(1U, object.m_count);
    EXPECT_TRUE(pointer);
    EXPECT_EQ(&object, pointer.Get());
    EXPECT_EQ(1U, pointer->m_count);
  }
  EXPECT_EQ(0U, object.m_count);
}

TEST(ComPtr, AttachTakesTheCallersReference) {
  Counted object;
  object.AddRef();
  { const auto pointer = ComPtr<Counted>::Attach(&object); }
  EXPECT_EQ(0U, object.m_count);
}

TEST(ComPtr, CopiesCount) {
  Counted object;
  const ComPtr<Counted> first(&object);
  {
    const ComPtr<Counted> second(first);
    EXPECT_EQ(2U, object.m_count);
    ComPtr<Counted> third;
    third = second;
    EXPECT_EQ(3U, object.m_count);
    third = nullptr;
    EXPECT_EQ(2U, object.m_count);
  }
  EXPECT_EQ(1U, object.m_count);
}

TEST(ComPtr, MovesDoNot) {
  Counted object;
  ComPtr<Counted> first(&object);
  ComPtr<Counted> second(std::move(first));
  EXPECT_EQ(1U, object.m_count);
  ComPtr<Counted> third;
  third = std::move(second);
  EXPECT_EQ(1U, object.m_count);
  EXPECT_EQ(&object, third.Get());
}

TEST(ComPtr, AssigningItselfKeepsTheObject) {
  Counted object;
  ComPtr<Counted> pointer(&object);
  const ComPtr<Counted>& same = pointer;
  pointer = same;
  EXPECT_EQ(1U, object.m_count);
  EXPECT_EQ(&object, pointer.Get());
}

TEST(ComPtr, AssigningReleasesWhatWasThere) {
  Counted old;
  Counted next;
  ComPtr<Counted> pointer(&old);
  pointer = ComPtr<Counted>(&next);
  EXPECT_EQ(0U, old.m_count);
  EXPECT_EQ(1U, next.m_count);
}

TEST(ComPtr, DetachGivesTheReferenceAway) {
  Counted object;
  ComPtr<Counted> pointer(&object);
  EXPECT_EQ(&object, pointer.Detach());
  EXPECT_FALSE(pointer);
  EXPECT_EQ(1U, object.m_count);
}

TEST(ComPtr, ReceiveReleasesWhatWasThere) {
  Counted object;
  ComPtr<Counted> pointer(&object);
  Counted** place = pointer.Receive();
  EXPECT_EQ(nullptr, *place);
  EXPECT_EQ(0U, object.m_count);
  object.AddRef();
  *place = &object;
  pointer.Reset();
  EXPECT_EQ(0U, object.m_count);
}

}  // namespace
