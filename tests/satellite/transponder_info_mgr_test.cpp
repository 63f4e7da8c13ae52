// What the transponder list has of its own.
#include "satellite/transponder_info_mgr.h"

#include "satellite/lists.h"

namespace {

class TransponderInfoMgr : public ListTest<Transponders> {
 protected:
  ComPtr<ITransponderInfo> AddedAs(UINT index, const char* name) {
    const ComPtr<ITransponderInfo> record = Added(index);
    record->SetName(Wide(name).Get());
    return record;
  }
  /// The text is the list's from here on.
  ComPtr<ITransponderInfo> ByName(const char* name) {
    ComPtr<ITransponderInfo> found;
    BSTR text = name != nullptr ? Wide(name).Release() : nullptr;
    const BSTR before = text;
    const HRESULT hr = List().GetTransponderInfoByName(&text, found.Receive());
    EXPECT_EQ(static_cast<void*>(before), static_cast<void*>(text)) << "the variable is left alone";
    ExpectHr(found ? S_OK : E_FAIL, hr);
    return found;
  }
};

}  // namespace

// That the text is freed on every path shows where leaks and double frees are looked for.
TEST_F(TransponderInfoMgr, LookupByNameTakesTheTextOver) {
  AddedAs(1, "11.954 H");
  const auto second = AddedAs(2, "12.109 V");
  AddedAs(3, "12.109 V");
  EXPECT_EQ(second.Get(), ByName("12.109 V").Get());
  ExpectRefCount(2, second.Get());
  for (const char* other : {"12.109 v", "12.109", ""}) EXPECT_FALSE(ByName(other));
  EXPECT_FALSE(ByName(nullptr));
  BSTR name = Wide("12.109 V").Release();
  ExpectHr(E_POINTER, List().GetTransponderInfoByName(&name, nullptr));
  auto* untouched = reinterpret_cast<ITransponderInfo*>(this);
  ExpectHr(E_POINTER, List().GetTransponderInfoByName(nullptr, &untouched));
  name = Wide("none").Release();
  ExpectHr(E_FAIL, List().GetTransponderInfoByName(&name, &untouched));
  EXPECT_EQ(static_cast<void*>(this), static_cast<void*>(untouched));
}

TEST_F(TransponderInfoMgr, AnUnsetNameEqualsAnEmptyOne) {
  const auto record = Added(1);
  EXPECT_EQ(record.Get(), ByName("").Get());
  EXPECT_EQ(record.Get(), ByName(nullptr).Get());
}

TEST_F(TransponderInfoMgr, NeitherMovedNorSorted) {
  AddedAs(1, "b")->SetCarrierFrequency(2);
  AddedAs(2, "a")->SetCarrierFrequency(1);
  for (int type = -1; type < 40; ++type) {
    ExpectHr(E_NOTIMPL, List().SortTransponder(static_cast<ESortType>(type), 1));
  }
  ExpectHr(E_NOTIMPL, List().SortTransponder(SortTpByFrequency, 1));
  ExpectHr(E_NOTIMPL, List().SortTransponder(SortTpByFrequency, 0));
  ExpectHr(E_NOTIMPL, List().MoveTransponder(1, 2));
  EXPECT_EQ((Texts{"b", "a"}), OrderedTexts());
}

TEST_F(TransponderInfoMgr, RemovingTheMiddleOfThree) {
  for (const char* text : {"a", "b", "c"}) AddElement(text);
  Load();
  const auto middle = At(1);
  ExpectHr(S_OK, List().RemoveTransponderInfo(middle.Get()));
  ExpectRefCount(1, middle.Get());
  EXPECT_FALSE(At(0));
  EXPECT_EQ("a", TextOf(At(1)));
  EXPECT_EQ("c", TextOf(At(2)));
  EXPECT_EQ(1, Dirty());
}
