// What the lists of the satellite model have in common.
#include "records/record_list.h"

#include "satellite/lists.h"

namespace {

template <typename T>
using CommonList = ListTest<T>;
TYPED_TEST_SUITE(CommonList, AllLists);

}  // namespace

TYPED_TEST(CommonList, NewIsEmptyAndClean) {
  EXPECT_EQ(0U, this->Count());
  EXPECT_EQ(0, this->Dirty());
  ExpectRefCount(1, &this->List());
  auto* untouched = reinterpret_cast<typename TypeParam::IRecord*>(this);
  ExpectHr(E_FAIL, TypeParam::ByIndex(this->List(), 0, &untouched));
  EXPECT_EQ(static_cast<void*>(this), static_cast<void*>(untouched));
}

TYPED_TEST(CommonList, NullPointers) {
  this->Added(3);
  ExpectHr(S_OK, this->List().SetDirty(0));
  ExpectHr(E_POINTER, TypeParam::Create(this->List(), nullptr));
  ExpectHr(E_POINTER, TypeParam::Add(this->List(), nullptr));
  ExpectHr(E_POINTER, TypeParam::Remove(this->List(), nullptr));
  ExpectHr(E_POINTER, TypeParam::Count(this->List(), nullptr));
  ExpectHr(E_POINTER, TypeParam::ByIndex(this->List(), 3, nullptr));
  ExpectHr(E_POINTER, this->List().GetDirty(nullptr));
  EXPECT_EQ(0, this->Dirty());
  EXPECT_TRUE(this->At(3)) << "nothing was numbered";
}

TYPED_TEST(CommonList, AnswersItsOwnInterfaceAlone) {
  constexpr IID kDispatch = {0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
  void* answer = this;
  ExpectHr(E_NOINTERFACE, this->List().QueryInterface(kDispatch, &answer));
  EXPECT_EQ(nullptr, answer);
  ExpectHr(S_OK, this->List().QueryInterface(IID_IUnknown, &answer));
  EXPECT_EQ(static_cast<void*>(&this->List()), answer);
  EXPECT_EQ(1U, this->List().Release());
  answer = this;
  ExpectHr(E_NOINTERFACE, this->Make()->QueryInterface(kDispatch, &answer));
  EXPECT_EQ(nullptr, answer);
}

TYPED_TEST(CommonList, CreatedRecordsAreNotAdded) {
  const auto record = this->Make();
  ExpectRefCount(1, record.Get());
  EXPECT_EQ(0U, this->Count());
  EXPECT_EQ(0, this->Dirty());
}

TYPED_TEST(CommonList, AddedInFrontOfTheFirstThatIsNotSmaller) {
  const auto first = this->Added(5);
  const auto second = this->Added(2);
  const auto third = this->Added(5);
  ExpectRefCount(2, first.Get());
  EXPECT_EQ(1, this->Dirty());
  EXPECT_EQ(third.Get(), this->At(5).Get());
  const auto order = this->Order();
  ASSERT_EQ(3U, order.size());
  EXPECT_EQ(second.Get(), order[0].Get());
  EXPECT_EQ(third.Get(), order[1].Get());
  EXPECT_EQ(first.Get(), order[2].Get());
}

TYPED_TEST(CommonList, IndexesAreUnsigned) {
  const auto greatest = this->Added(0xFFFFFFFF);
  const auto middle = this->Added(0x80000000);
  const auto small = this->Added(0x7FFFFFFF);
  const auto order = this->Order();
  EXPECT_EQ(small.Get(), order[0].Get());
  EXPECT_EQ(middle.Get(), order[1].Get());
  EXPECT_EQ(greatest.Get(), order[2].Get());
}

// An index that was changed in place leaves the list unordered; the first that stops the walk
// counts.
TYPED_TEST(CommonList, AddedToAnUnorderedList) {
  const auto first = this->Added(1);
  const auto second = this->Added(2);
  first->SetIndex(9);
  const auto third = this->Added(2);
  const auto order = this->Order();
  EXPECT_EQ(third.Get(), order[0].Get());
  EXPECT_EQ(first.Get(), order[1].Get());
  EXPECT_EQ(second.Get(), order[2].Get());
}

TYPED_TEST(CommonList, TheSameRecordTwice) {
  const auto record = this->Added(4);
  ExpectHr(S_OK, TypeParam::Add(this->List(), record.Get()));
  EXPECT_EQ(2U, this->Count());
  ExpectRefCount(3, record.Get());
  ExpectHr(S_OK, TypeParam::Remove(this->List(), record.Get()));
  EXPECT_EQ(1U, this->Count());
  ExpectRefCount(2, record.Get());
  EXPECT_EQ(1U, this->IndexOf(record));
}

TYPED_TEST(CommonList, AFailingIndexIsAnswered) {
  constexpr HRESULT kOwn = static_cast<HRESULT>(0x80041234);
  auto* raw = new HostRecord<typename TypeParam::Record>;
  const auto record = ComPtr<typename TypeParam::IRecord>::Attach(raw);
  raw->indexResult = kOwn;
  ExpectHr(kOwn, TypeParam::Add(this->List(), record.Get()));
  EXPECT_EQ(0U, this->Count());
  EXPECT_EQ(0, this->Dirty());
  ExpectRefCount(1, record.Get());
}

TYPED_TEST(CommonList, ARecordThatDoesNotTellStopsNoWalk) {
  HostRecord<typename TypeParam::Record>* raw = nullptr;
  const auto silent = this->AddedHost(9, &raw);
  raw->indexResult = E_ACCESSDENIED;
  const auto other = this->Added(3);
  ExpectHr(S_OK, this->List().SetDirty(0));
  EXPECT_FALSE(this->At(9));
  EXPECT_EQ(other.Get(), this->At(3).Get());
  raw->indexResult = S_OK;
  const auto order = this->Order();
  EXPECT_EQ(silent.Get(), order[0].Get());
  EXPECT_EQ(other.Get(), order[1].Get());
}

TYPED_TEST(CommonList, LookupsHandOutAReference) {
  const auto record = this->Added(7);
  {
    const auto found = this->At(7);
    EXPECT_EQ(record.Get(), found.Get());
    ExpectRefCount(3, record.Get());
  }
  ExpectRefCount(2, record.Get());
  auto* untouched = reinterpret_cast<typename TypeParam::IRecord*>(this);
  ExpectHr(E_FAIL, TypeParam::ByIndex(this->List(), 8, &untouched));
  EXPECT_EQ(static_cast<void*>(this), static_cast<void*>(untouched));
}

TYPED_TEST(CommonList, RemovingNumbersTheRestFromOne) {
  const auto first = this->Added(0);
  const auto second = this->Added(10);
  const auto third = this->Added(20);
  ExpectHr(S_OK, this->List().SetDirty(0));
  ExpectHr(S_OK, TypeParam::Remove(this->List(), second.Get()));
  EXPECT_EQ(1, this->Dirty());
  EXPECT_EQ(2U, this->Count());
  ExpectRefCount(1, second.Get());
  EXPECT_EQ(1U, this->IndexOf(first));
  EXPECT_EQ(10U, this->IndexOf(second));
  EXPECT_EQ(2U, this->IndexOf(third));
  EXPECT_FALSE(this->At(0));
}

// The caller's own reference goes, as hosts that hand it over rely on.
TYPED_TEST(CommonList, RemovingAStrangerReleasesItAndNumbers) {
  const auto held = this->Added(5);
  const auto stranger = this->Make();
  stranger->AddRef();
  ExpectHr(S_OK, this->List().SetDirty(0));
  ExpectHr(S_OK, TypeParam::Remove(this->List(), stranger.Get()));
  ExpectRefCount(1, stranger.Get());
  EXPECT_EQ(1U, this->Count());
  EXPECT_EQ(1U, this->IndexOf(held));
  EXPECT_EQ(1, this->Dirty());
}

TYPED_TEST(CommonList, RemovingTheLastReferenceDestroys) {
  HostRecord<typename TypeParam::Record>* raw = nullptr;
  this->AddedHost(1, &raw);
  EXPECT_EQ(1, raw->alive);
  ExpectHr(S_OK, TypeParam::Remove(this->List(), raw));
  EXPECT_EQ(0, (HostRecord<typename TypeParam::Record>::alive));
}

TYPED_TEST(CommonList, ClearOpenAndCloseEmpty) {
  using Method = HRESULT (STDMETHODCALLTYPE TypeParam::List::*)();
  for (const Method method : {Method{&TypeParam::List::Clear}, Method{&TypeParam::List::Open},
                              Method{&TypeParam::List::Close}}) {
    const auto record = this->Added(1);
    this->Added(2);
    EXPECT_EQ(1, this->Dirty());
    ExpectHr(S_OK, (this->List().*method)());
    EXPECT_EQ(0U, this->Count());
    EXPECT_EQ(0, this->Dirty());
    ExpectRefCount(1, record.Get());
    EXPECT_EQ(1U, this->IndexOf(record)) << "records that leave keep their index";
    ExpectHr(S_OK, (this->List().*method)());
  }
}

TYPED_TEST(CommonList, DestructionReleases) {
  const auto record = this->Added(1);
  this->m_list.reset();
  ExpectRefCount(1, record.Get());
}

TYPED_TEST(CommonList, SettersMarkNothing) {
  const auto record = this->Added(1);
  ExpectHr(S_OK, this->List().SetDirty(0));
  LONG dirty = 4711;
  ExpectHr(S_OK, record->GetDirty(&dirty));
  EXPECT_EQ(0, dirty) << "adding does not mark the record";
  record->SetIndex(2);
  EXPECT_EQ(0, this->Dirty());
}

TYPED_TEST(CommonList, SetDirtyStoresWhatItIsGiven) {
  const auto record = this->Added(1);
  for (const LONG value : {5, -1, 0}) {
    ExpectHr(S_OK, this->List().SetDirty(value));
    EXPECT_EQ(value, this->Dirty());
    LONG dirty = 4711;
    ExpectHr(S_OK, record->GetDirty(&dirty));
    EXPECT_EQ(0, dirty);
  }
}

// Satellites and transponders are asked, LNB types and assignments are not.
TYPED_TEST(CommonList, DirtyRecords) {
  HostRecord<typename TypeParam::Record>* first = nullptr;
  HostRecord<typename TypeParam::Record>* second = nullptr;
  HostRecord<typename TypeParam::Record>* third = nullptr;
  this->AddedHost(1, &first);
  this->AddedHost(2, &second);
  this->AddedHost(3, &third);
  ExpectHr(S_OK, this->List().SetDirty(0));
  EXPECT_EQ(0, this->Dirty());
  first->dirtyResult = E_FAIL;
  second->SetDirty(-7);
  first->calls = second->calls = third->calls = 0;
  EXPECT_EQ(TypeParam::kAsksRecords ? 1 : 0, this->Dirty());
  EXPECT_EQ(TypeParam::kAsksRecords ? 1 : 0, first->calls);
  EXPECT_EQ(TypeParam::kAsksRecords ? 1 : 0, second->calls);
  EXPECT_EQ(0, third->calls) << "the first dirty one decides";
  ExpectHr(S_OK, this->List().SetDirty(3));
  EXPECT_EQ(3, this->Dirty());
}
