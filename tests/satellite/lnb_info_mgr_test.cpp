// What the list of LNB types has of its own.
#include "satellite/lnb_info_mgr.h"

#include "satellite/lists.h"

namespace {

class LnbInfoMgr : public ListTest<Lnbs> {
 protected:
  ComPtr<ILNBInfo> AddedAs(UINT index, const char* type) {
    const ComPtr<ILNBInfo> record = Added(index);
    record->SetType(Wide(type).Get());
    return record;
  }
};

/// Numbers from the back.
class ReversedLNBs : public CLNBInfoMgr {
 public:
  std::vector<Numbering> asked;
  HRESULT Renumber(Numbering from) override {
    asked.push_back(from);
    return CLNBInfoMgr::Renumber(from == Numbering::FromFront ? Numbering::FromBack
                                                              : Numbering::FromFront);
  }
};

}  // namespace

TEST_F(LnbInfoMgr, LookupByTypeLeavesTheCallersText) {
  AddedAs(1, "Standard");
  const auto second = AddedAs(2, "Universal");
  AddedAs(3, "Universal");
  const Bstr type = Wide("Universal");
  ComPtr<ILNBInfo> found;
  ExpectHr(S_OK, List().GetLNBInfoByType(type.Get(), found.Receive()));
  EXPECT_EQ(second.Get(), found.Get());
  ExpectRefCount(3, second.Get());
  ExpectText(OLESTR("Universal"), type.Get());
  ExpectHr(E_POINTER, List().GetLNBInfoByType(type.Get(), nullptr));
  auto* untouched = reinterpret_cast<ILNBInfo*>(this);
  for (const char* other : {"universal", "Universal ", "", "none"}) {
    ExpectHr(E_FAIL, List().GetLNBInfoByType(Wide(other).Get(), &untouched));
  }
  ExpectHr(E_FAIL, List().GetLNBInfoByType(nullptr, &untouched));
  EXPECT_EQ(static_cast<void*>(this), static_cast<void*>(untouched));
}

TEST_F(LnbInfoMgr, AnUnsetTypeEqualsAnEmptyOne) {
  const auto record = Added(1);
  ComPtr<ILNBInfo> found;
  ExpectHr(S_OK, List().GetLNBInfoByType(nullptr, found.Receive()));
  EXPECT_EQ(record.Get(), found.Get());
}

TEST_F(LnbInfoMgr, RenumberFromBothEnds) {
  const auto first = AddedAs(10, "a");
  const auto second = AddedAs(20, "b");
  ExpectHr(S_OK, List().SetDirty(0));
  ExpectHr(S_OK, List().Renumber(Numbering::FromBack));
  EXPECT_EQ(2U, IndexOf(first));
  EXPECT_EQ(1U, IndexOf(second));
  EXPECT_EQ(1, Dirty());
  ExpectHr(S_OK, List().Renumber(Numbering::FromFront));
  EXPECT_EQ(1U, IndexOf(first));
  EXPECT_EQ(2U, IndexOf(second));
}

TEST_F(LnbInfoMgr, RenumberStrips) {
  AddElement("a");
  Load();
  ExpectHr(S_OK, List().Renumber(Numbering::FromBack));
  EXPECT_EQ(0, Elements());
  EXPECT_EQ(1U, Count());
}

TEST_F(LnbInfoMgr, RemovingRenumbersThroughTheTable) {
  ReversedLNBs list;
  ComPtr<ILNBInfo> records[3];
  UINT index = 5;
  for (ComPtr<ILNBInfo>& record : records) {
    ExpectHr(S_OK, list.CreateLNBInfo(record.Receive()));
    record->SetIndex(index++);
    ExpectHr(S_OK, list.AddLNBInfo(record.Get()));
  }
  ExpectHr(S_OK, list.RemoveLNBInfo(records[0].Get()));
  EXPECT_EQ(std::vector<Numbering>{Numbering::FromFront}, list.asked);
  EXPECT_EQ(2U, IndexOf(records[1]));
  EXPECT_EQ(1U, IndexOf(records[2]));
}
