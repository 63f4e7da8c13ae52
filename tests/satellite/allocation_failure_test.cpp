// What the satellite model does when there is no memory.
#include "channels/failing_new.h"
#include "platform/com_error.h"
#include "satellite/lists.h"

namespace {

template <typename T>
using AllocationFailure = ListTest<T>;
TYPED_TEST_SUITE(AllocationFailure, AllLists);

}  // namespace

TYPED_TEST(AllocationFailure, CreationAnswersIt) {
  typename TypeParam::IRecord* record = nullptr;
  {
    const FailAfter fail(0);
    ExpectHr(E_OUTOFMEMORY, TypeParam::Create(this->List(), &record));
  }
  EXPECT_EQ(nullptr, record);
}

TYPED_TEST(AllocationFailure, GrowthLeavesTheListAsItIs) {
  int failures = 0;
  for (UINT i = 0; i < 40; ++i) {
    const auto record = this->Make(i);
    ExpectHr(S_OK, this->List().SetDirty(0));
    HRESULT hr = S_OK;
    {
      const FailAfter fail(0);
      hr = TypeParam::Add(this->List(), record.Get());
    }
    if (hr == S_OK) continue;
    ++failures;
    ExpectHr(E_OUTOFMEMORY, hr);
    ExpectRefCount(1, record.Get());
    EXPECT_EQ(i, this->Count());
    EXPECT_EQ(0, this->Dirty());
    ExpectHr(S_OK, TypeParam::Add(this->List(), record.Get()));
  }
  EXPECT_GE(failures, 3);
  EXPECT_EQ(40U, this->Count());
}

// Lookups, removal and clearing need no memory.
TYPED_TEST(AllocationFailure, TheRestWorksWithoutMemory) {
  const auto first = this->Added(1);
  this->Added(2);
  UINT count = 0;
  LONG dirty = 0;
  const FailAfter fail(0);
  ComPtr<typename TypeParam::IRecord> found;
  ExpectHr(S_OK, TypeParam::Count(this->List(), &count));
  ExpectHr(S_OK, TypeParam::ByIndex(this->List(), 2, found.Receive()));
  ExpectHr(S_OK, this->List().GetDirty(&dirty));
  ExpectHr(S_OK, TypeParam::Remove(this->List(), first.Get()));
  ExpectHr(S_OK, this->List().Clear());
}

// Wherever memory ends while loading: the answer says so, no record is lost and none is there
// twice.
TYPED_TEST(AllocationFailure, LoadingLeavesAUsableList) {
  for (const char* text : {"a", "b", "c", "d"}) this->AddElement(text);
  for (UINT i = 0; i < 3; ++i) this->Added(i);
  int allocations = 0;
  HRESULT hr = E_OUTOFMEMORY;
  for (;; ++allocations) {
    ASSERT_LT(allocations, 5000);
    {
      const FailAfter fail(allocations);
      try {
        hr = this->List().Load(dom::kIidNode, this->Source().Get());
      } catch (const ComError& error) {
        hr = error.Error();
      }
    }
    if (hr != E_OUTOFMEMORY) break;
    EXPECT_EQ(3U, this->Count()) << allocations;
  }
  ExpectHr(this->LoadResult(), hr);
  EXPECT_GT(allocations, 5);
  EXPECT_EQ(7U, this->Count());
}

// The element it came from stays the list's own, and the other one its document's.
TYPED_TEST(AllocationFailure, AFailedLoadBindsNothing) {
  TextDocument other(TypeParam::kSource);
  const dom::Element container =
      *TypeParam::kContainer == '\0' ? other.root : Child(other.root, TypeParam::kContainer);
  for (int i = 0; i < 3; ++i) {
    dom::Element element;
    ExpectHr(S_OK, other.Document().CreateElement(TypeParam::kTag, element));
    ExpectHr(S_OK, container.AppendChild(element));
  }
  int allocations = 0;
  for (;; ++allocations) {
    ASSERT_LT(allocations, 5000);
    ExpectHr(S_OK, this->List().Open());
    this->AddElement("a");
    this->Load();
    HRESULT hr = S_OK;
    {
      const FailAfter fail(allocations);
      try {
        hr = this->List().Load(dom::kIidNode, other.root.Get());
      } catch (const ComError& error) {
        hr = error.Error();
      }
    }
    if (hr != E_OUTOFMEMORY) break;
    EXPECT_EQ(0, this->Dirty());
    ExpectHr(S_OK, this->List().Clear());
    EXPECT_EQ(0, this->Elements()) << allocations;
    EXPECT_EQ(3, ::Count(container, (std::string("./") + TypeParam::kTag).c_str()));
  }
  EXPECT_GT(allocations, 5);
}

// The records of the element go in any case: with the record, or not at all.
TYPED_TEST(AllocationFailure, StrippingTakesNoMemory) {
  for (const char* text : {"a", "b", "c"}) this->AddElement(text);
  this->AddElement("x", "Other");
  this->Load();
  const auto record = this->At(1);
  {
    const FailAfter fail(0);
    ExpectHr(S_OK, TypeParam::Remove(this->List(), record.Get()));
  }
  EXPECT_EQ(2U, this->Count());
  EXPECT_EQ(0, this->Elements());
  EXPECT_TRUE(this->Container().HasChildNodes()) << "only records are stripped";
  this->AddElement("d");
  {
    const FailAfter fail(0);
    ExpectHr(S_OK, this->List().Clear());
  }
  EXPECT_EQ(0, this->Elements());
}
