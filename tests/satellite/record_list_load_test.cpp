// Loading, and the element that a loaded list keeps true to itself.
#include "satellite/lists.h"

namespace {

template <typename T>
using LoadedList = ListTest<T>;
TYPED_TEST_SUITE(LoadedList, AllLists);

constexpr IID kOtherIid = {
    0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

}  // namespace

TYPED_TEST(LoadedList, Arguments) {
  auto& list = this->List();
  this->AddElement("a");
  this->Added(1);
  IUnknown* const node = this->Source().Get();
  const auto record = this->Make();
  for (const auto method : {&TypeParam::List::Load, &TypeParam::List::Save}) {
    ExpectHr(E_NOTIMPL, (list.*method)(kOtherIid, node));
    ExpectHr(E_NOTIMPL, (list.*method)(IID_IUnknown, node));
    ExpectHr(E_NOTIMPL, (list.*method)(kOtherIid, nullptr));
    ExpectHr(E_INVALIDARG, (list.*method)(dom::kIidNode, nullptr));
    ExpectHr(E_INVALIDARG, (list.*method)(dom::kIidElement, nullptr));
    ExpectHr(E_INVALIDARG, (list.*method)(dom::kIidNode, record.Get()));
  }
  EXPECT_EQ(1U, this->Count());
  EXPECT_EQ(1, this->Dirty());
  ExpectHr(S_OK, list.Clear());
  EXPECT_EQ(1, this->Elements()) << "no element is held after a refused load";
}

TYPED_TEST(LoadedList, TheCatalogueNeverWritesItself) {
  this->Added(1);
  const std::string before = Formatted(this->Source());
  for (const IID& iid : {dom::kIidNode, dom::kIidElement}) {
    const HRESULT hr = this->List().Save(iid, this->Source().Get());
    ExpectHr(TypeParam::kSaves ? S_OK : E_NOTIMPL, hr);
  }
  EXPECT_EQ(TypeParam::kSaves, before != Formatted(this->Source()));
  EXPECT_EQ(TypeParam::kSaves ? 0 : 1, this->Dirty());
}

TYPED_TEST(LoadedList, FileOrderFromZero) {
  for (const char* text : {"c", "a", "b"}) this->AddElement(text);
  this->AddElement("no record", "Other");
  this->Load();
  EXPECT_EQ(3U, this->Count());
  EXPECT_EQ(0, this->Dirty());
  UINT index = 0;
  for (const char* text : {"c", "a", "b"}) {
    const auto record = this->At(index++);
    ASSERT_TRUE(record);
    EXPECT_EQ(text, this->TextOf(record));
    LONG dirty = 4711;
    ExpectHr(S_OK, record->GetDirty(&dirty));
    EXPECT_EQ(0, dirty);
    ExpectRefCount(2, record.Get());
  }
  // Satellites without an index in the file go in front of each other.
  const bool isReversed = std::is_same_v<TypeParam, Satellites>;
  EXPECT_EQ(isReversed ? (std::vector<std::string>{"b", "a", "c"})
                       : (std::vector<std::string>{"c", "a", "b"}),
            this->OrderedTexts());
}

TYPED_TEST(LoadedList, NothingToLoad) {
  this->Added(6);
  ExpectHr(S_OK, this->List().Load(dom::kIidElement, this->Source().Get()));
  EXPECT_EQ(0, this->Dirty()) << "the flag of what was there goes too";
  EXPECT_EQ(1U, this->Count());
}

TYPED_TEST(LoadedList, LoadedToWhatIsThere) {
  const auto first = this->Added(0);
  const auto last = this->Added(9);
  for (const char* text : {"a", "b"}) this->AddElement(text);
  this->Load();
  EXPECT_EQ(4U, this->Count());
  EXPECT_EQ(0, this->Dirty());
  EXPECT_EQ(0U, this->IndexOf(first));
  EXPECT_EQ(9U, this->IndexOf(last));
  const auto order = this->Order();
  if constexpr (std::is_same_v<TypeParam, Satellites>) {
    // Without an index in the file the second is placed by 0, in front of the first again.
    EXPECT_EQ("b", this->TextOf(order[0]));
    EXPECT_EQ("a", this->TextOf(order[1]));
    EXPECT_EQ(first.Get(), order[2].Get());
  } else {
    EXPECT_EQ("a", this->TextOf(order[0]));
    EXPECT_EQ("b", this->TextOf(order[2]));
    EXPECT_EQ(first.Get(), order[1].Get());
  }
  EXPECT_EQ(last.Get(), order[3].Get());
}

TYPED_TEST(LoadedList, LoadedTwiceIsThereTwice) {
  this->AddElement("a");
  this->Load();
  this->Load();
  EXPECT_EQ(2U, this->Count());
}

TYPED_TEST(LoadedList, ClearStrips) {
  this->AddElement("a");
  this->AddElement("b");
  this->AddElement("other", "Other");
  this->Load();
  ExpectHr(S_OK, this->List().Clear());
  EXPECT_EQ(0, this->Elements());
  EXPECT_EQ(1, Count(this->Container(), "./Other"));
  // The element itself stays held.
  this->AddElement("c");
  ExpectHr(S_OK, this->List().Clear());
  EXPECT_EQ(0, this->Elements());
}

TYPED_TEST(LoadedList, RemovingStripsAll) {
  for (const char* text : {"a", "b", "c"}) this->AddElement(text);
  this->Load();
  ExpectHr(S_OK, TypeParam::Remove(this->List(), this->At(1).Get()));
  EXPECT_EQ(0, this->Elements());
  EXPECT_EQ(2U, this->Count());
  EXPECT_FALSE(this->At(0));
  EXPECT_TRUE(this->At(1));
  EXPECT_TRUE(this->At(2));
  // A stranger too.
  this->AddElement("d");
  this->Number();
  EXPECT_EQ(0, this->Elements());
}

TYPED_TEST(LoadedList, AddingAndNumberingByHandLeaveTheElement) {
  this->AddElement("a");
  this->Load();
  this->Added(7);
  this->At(0)->SetIndex(4);
  EXPECT_EQ(1, this->Elements());
}

TYPED_TEST(LoadedList, OpenAndCloseLeaveTheElement) {
  using Method = HRESULT (STDMETHODCALLTYPE TypeParam::List::*)();
  for (const Method method : {Method{&TypeParam::List::Open}, Method{&TypeParam::List::Close}}) {
    this->AddElement("a");
    this->Load();
    const LONG before = this->Elements();
    ExpectHr(S_OK, (this->List().*method)());
    EXPECT_EQ(0U, this->Count());
    // Nor is it held any more.
    ExpectHr(S_OK, this->List().Clear());
    this->Number();
    EXPECT_EQ(before, this->Elements());
  }
}

TYPED_TEST(LoadedList, DestructionLeavesTheElement) {
  this->AddElement("a");
  this->Load();
  this->m_list.reset();
  EXPECT_EQ(1, this->Elements());
}

TYPED_TEST(LoadedList, TheLastElementIsTheHeldOne) {
  this->AddElement("a");
  this->Load();
  TextDocument other(TypeParam::kSource);
  ExpectHr(S_OK, this->List().Load(dom::kIidNode, other.root.Get()));
  ExpectHr(S_OK, this->List().Clear());
  EXPECT_EQ(1, this->Elements());
}

TYPED_TEST(LoadedList, OneReferenceOnTheElement) {
  IUnknown* const node = this->Source().Get();
  node->AddRef();
  const ULONG before = node->Release();
  this->LoadEmpty();
  ExpectRefCount(before + 1, node);
  this->LoadEmpty();
  ExpectRefCount(before + 1, node);
  TextDocument other(TypeParam::kSource);
  ExpectHr(S_OK, this->List().Load(dom::kIidNode, other.root.Get()));
  ExpectRefCount(before, node);
  this->LoadEmpty();
  ExpectHr(S_OK, this->List().Clear());
  ExpectRefCount(before + 1, node);
  ExpectHr(S_OK, this->List().Close());
  ExpectRefCount(before, node);
  this->LoadEmpty();
  this->m_list.reset();
  ExpectRefCount(before, node);
}

TYPED_TEST(LoadedList, OutlivesTheDocument) {
  this->AddElement("a");
  this->Load();
  this->m_source.root = dom::Element();
  this->m_source.Document().Close();
  EXPECT_EQ(1U, this->Count());
  ExpectHr(S_OK, this->List().Clear());
  EXPECT_EQ(0U, this->Count());
}
