// What the list of the dishes' satellites has of its own.
#include "satellite/dish_sat_info_mgr.h"

#include "satellite/lists.h"

namespace {

class DishSatInfoMgr : public ListTest<Dish<0>> {
 protected:
  ComPtr<IDishSatInfo> AddedTo(UINT dish, UINT index, const char* id = "id") {
    const ComPtr<IDishSatInfo> record = Make(index);
    record->SetID(Wide(id).Get());
    ExpectHr(S_OK, List().AddDishSatInfo(record.Get(), dish));
    return record;
  }
  UINT CountOf(UINT dish) {
    UINT count = 4711;
    ExpectHr(S_OK, List().GetDishSatCount(&count, dish));
    return count;
  }
  std::string IdAt(UINT dish, UINT index) {
    ComPtr<IDishSatInfo> record;
    const HRESULT hr = List().GetDishSatInfoByIndex(record.Receive(), dish, index);
    return record ? TextOf(record) : HrText(hr);
  }
  HRESULT LoadText(const char* xml) {
    m_document.emplace(xml);
    return List().Load(dom::kIidNode, m_document->root.Get());
  }

  std::optional<TextDocument> m_document;
};

/// Numbers from the back.
class ReversedDishes : public CDishSatInfoMgr {
 public:
  std::vector<UINT> asked;
  HRESULT Renumber(Numbering from, UINT dishNum) override {
    EXPECT_EQ(Numbering::FromFront, from);
    asked.push_back(dishNum);
    return CDishSatInfoMgr::Renumber(Numbering::FromBack, dishNum);
  }
};

constexpr UINT kBadDishes[] = {4, 5, 0x80000000, 0xFFFFFFFF};

}  // namespace

TEST_F(DishSatInfoMgr, DishNumbersAboveThree) {
  const auto record = Make(1);
  auto* untouched = reinterpret_cast<IDishSatInfo*>(this);
  UINT count = 4711;
  for (const UINT dish : kBadDishes) {
    // The pointer is looked at first.
    ExpectHr(E_POINTER, List().AddDishSatInfo(nullptr, dish));
    ExpectHr(E_POINTER, List().RemoveDishSatInfo(nullptr, dish));
    ExpectHr(E_POINTER, List().GetDishSatCount(nullptr, dish));
    ExpectHr(E_POINTER, List().GetDishSatInfoByIndex(nullptr, dish, 1));
    ExpectHr(E_FAIL, List().AddDishSatInfo(record.Get(), dish));
    ExpectHr(E_FAIL, List().RemoveDishSatInfo(record.Get(), dish));
    ExpectHr(E_FAIL, List().GetDishSatCount(&count, dish));
    ExpectHr(E_FAIL, List().GetDishSatInfoByIndex(&untouched, dish, 1));
    ExpectHr(E_FAIL, List().Renumber(Numbering::FromFront, dish));
  }
  ExpectRefCount(1, record.Get());
  EXPECT_EQ(4711U, count);
  EXPECT_EQ(static_cast<void*>(this), static_cast<void*>(untouched));
  EXPECT_EQ(0, Dirty());
}

TEST_F(DishSatInfoMgr, DishesAreTheirOwn) {
  for (UINT dish = 0; dish < 4; ++dish) {
    for (UINT i = 0; i <= dish; ++i) AddedTo(dish, i, std::to_string(dish * 10 + i).c_str());
  }
  for (UINT dish = 0; dish < 4; ++dish) {
    EXPECT_EQ(dish + 1, CountOf(dish));
    EXPECT_EQ(std::to_string(dish * 10 + dish), IdAt(dish, dish));
    EXPECT_EQ(HrText(E_FAIL), IdAt(dish, dish + 1));
  }
  ExpectHr(S_OK, List().Clear());
  for (UINT dish = 0; dish < 4; ++dish) EXPECT_EQ(0U, CountOf(dish));
}

TEST_F(DishSatInfoMgr, OneRecordOnSeveralDishes) {
  const auto record = AddedTo(0, 1);
  ExpectHr(S_OK, List().AddDishSatInfo(record.Get(), 3));
  ExpectRefCount(3, record.Get());
  ExpectHr(S_OK, List().RemoveDishSatInfo(record.Get(), 3));
  ExpectRefCount(2, record.Get());
  EXPECT_EQ(1U, CountOf(0));
  EXPECT_EQ(0U, CountOf(3));
}

TEST_F(DishSatInfoMgr, IndexesThreeOneThree) {
  AddedTo(2, 3, "early");
  AddedTo(2, 1, "one");
  AddedTo(2, 3, "late");
  EXPECT_EQ("late", IdAt(2, 3));
  ExpectHr(S_OK, List().Renumber(Numbering::FromFront, 2));
  EXPECT_EQ("one", IdAt(2, 1));
  EXPECT_EQ("late", IdAt(2, 2));
  EXPECT_EQ("early", IdAt(2, 3));
  ExpectHr(S_OK, List().Renumber(Numbering::FromBack, 2));
  EXPECT_EQ("early", IdAt(2, 1));
  EXPECT_EQ("one", IdAt(2, 3));
}

TEST_F(DishSatInfoMgr, RemovingNumbersOneDish) {
  const auto first = AddedTo(0, 5);
  const auto other = AddedTo(1, 7);
  const auto removed = AddedTo(0, 6);
  ExpectHr(S_OK, List().RemoveDishSatInfo(removed.Get(), 0));
  EXPECT_EQ(1U, IndexOf(first));
  EXPECT_EQ(7U, IndexOf(other));
  // A record of another dish is a stranger here, and loses the caller's reference.
  other->AddRef();
  ExpectHr(S_OK, List().RemoveDishSatInfo(other.Get(), 0));
  ExpectRefCount(2, other.Get());
  EXPECT_EQ(1U, CountOf(1));
}

TEST_F(DishSatInfoMgr, RemovingRenumbersThroughTheTable) {
  ReversedDishes list;
  ComPtr<IDishSatInfo> records[3];
  UINT index = 5;
  for (ComPtr<IDishSatInfo>& record : records) {
    ExpectHr(S_OK, list.CreateDishSatInfo(record.Receive()));
    record->SetIndex(index++);
    ExpectHr(S_OK, list.AddDishSatInfo(record.Get(), 2));
  }
  ExpectHr(S_OK, list.RemoveDishSatInfo(records[0].Get(), 2));
  EXPECT_EQ(std::vector<UINT>{2}, list.asked);
  EXPECT_EQ(2U, IndexOf(records[1]));
  EXPECT_EQ(1U, IndexOf(records[2]));
}

TEST_F(DishSatInfoMgr, LoadsFourDishes) {
  ExpectHr(S_OK, LoadText("<S><DISH_2><SAT id='b0' band='Ku' LNB_Low='1' LNB_High='2' "
                          "LNB_Switch='3'/><SAT id='b1'/></DISH_2><DISH_1/>"
                          "<DISH_4><SAT id='d0'/></DISH_4><DISH_3><Other/></DISH_3></S>"));
  EXPECT_EQ(0U, CountOf(0));
  EXPECT_EQ(2U, CountOf(1));
  EXPECT_EQ(0U, CountOf(2));
  EXPECT_EQ(1U, CountOf(3));
  EXPECT_EQ("b0", IdAt(1, 0));
  EXPECT_EQ("b1", IdAt(1, 1));
  EXPECT_EQ("d0", IdAt(3, 0));
  EXPECT_EQ(0, Dirty());
  ComPtr<IDishSatInfo> record;
  ExpectHr(S_OK, List().GetDishSatInfoByIndex(record.Receive(), 1, 0));
  DWORD frequency = 0;
  Bstr band;
  record->GetBand(band.Receive());
  ExpectText(OLESTR("Ku"), band.Get());
  record->GetLowFreq(&frequency);
  EXPECT_EQ(1U, frequency);
  record->GetHighFreq(&frequency);
  EXPECT_EQ(2U, frequency);
  record->GetSwitchFreq(&frequency);
  EXPECT_EQ(3U, frequency);
  // After a removal numbers start at 1.
  ExpectHr(S_OK, List().RemoveDishSatInfo(record.Get(), 1));
  EXPECT_EQ(HrText(E_FAIL), IdAt(1, 0));
  EXPECT_EQ("b1", IdAt(1, 1));
  EXPECT_EQ("d0", IdAt(3, 0)) << "only that dish is numbered";
  for (const char* dish : {"./DISH_2/SAT", "./DISH_4/SAT"}) {
    EXPECT_EQ(0, ::Count(m_document->root, dish)) << "all dishes are stripped";
  }
  EXPECT_EQ(1, ::Count(m_document->root, "./DISH_3/Other"));
}

TEST_F(DishSatInfoMgr, MissingAndDoubledDishElements) {
  ExpectHr(S_OK, LoadText("<S><DISH_3><SAT id='first'/></DISH_3><DISH_3><SAT id='second'/></DISH_3>"
                          "</S>"));
  EXPECT_EQ(0U, CountOf(0));
  EXPECT_EQ(1U, CountOf(2));
  EXPECT_EQ("first", IdAt(2, 0));
  ExpectHr(S_OK, List().Clear());
  EXPECT_EQ(1, ::Count(m_document->root, "./DISH_3/SAT")) << "the second one is nobody's";
  ExpectHr(S_OK, LoadText("<S/>"));
  for (UINT dish = 0; dish < 4; ++dish) EXPECT_EQ(0U, CountOf(dish));
}

TEST_F(DishSatInfoMgr, SavesInListOrder) {
  const auto second = AddedTo(1, 8, "second");
  const auto first = AddedTo(1, 3, "first");
  const auto other = AddedTo(3, 1, "other");
  second->SetDirty(1);
  ExpectHr(S_OK, List().Save(dom::kIidElement, Source().Get()));
  EXPECT_EQ(
      "<SAT_SETTING>\n\t<DISH_1/>\n\t<DISH_2>\n"
      "\t\t<SAT id=\"first\" band=\"\" LNB_Low=\"0\" LNB_High=\"0\" LNB_Switch=\"0\"/>\n"
      "\t\t<SAT id=\"second\" band=\"\" LNB_Low=\"0\" LNB_High=\"0\" LNB_Switch=\"0\"/>\n"
      "\t</DISH_2>\n\t<DISH_3/>\n\t<DISH_4>\n"
      "\t\t<SAT id=\"other\" band=\"\" LNB_Low=\"0\" LNB_High=\"0\" LNB_Switch=\"0\"/>\n"
      "\t</DISH_4>\n</SAT_SETTING>\n",
      Formatted(Source()));
  LONG dirty = 4711;
  ExpectHr(S_OK, second->GetDirty(&dirty));
  EXPECT_EQ(0, dirty);
  EXPECT_EQ(0, Dirty());
  EXPECT_EQ(8U, IndexOf(second)) << "saving numbers nothing";
  // A list that was saved into an element does not hold it.
  ExpectHr(S_OK, List().Clear());
  EXPECT_EQ(3, ::Count(Source(), "./DISH_2/SAT") + ::Count(Source(), "./DISH_4/SAT"));
}

TEST_F(DishSatInfoMgr, SavingAgainFindsTheElements) {
  AddedTo(0, 1, "a");
  const auto changed = AddedTo(0, 2, "b");
  ExpectHr(S_OK, List().Save(dom::kIidNode, Source().Get()));
  const std::string before = Formatted(Source());
  ExpectHr(S_OK, List().Save(dom::kIidNode, Source().Get()));
  EXPECT_EQ(before, Formatted(Source()));
  // Nothing is deleted: a changed assignment is a new one.
  changed->SetLowFreq(7);
  ExpectHr(S_OK, List().Save(dom::kIidNode, Source().Get()));
  EXPECT_EQ(3, Elements());
}

TEST_F(DishSatInfoMgr, SavingAMissingDishFails) {
  const TextDocument document("<S><DISH_2/></S>");
  const auto record = AddedTo(0, 1, "a");
  record->SetDirty(1);
  ExpectHr(E_FAIL, List().Save(dom::kIidNode, document.root.Get()));
  EXPECT_EQ("<S>\n\t<DISH_2/>\n</S>\n", Formatted(document.root));
  LONG dirty = 4711;
  ExpectHr(S_OK, record->GetDirty(&dirty));
  EXPECT_EQ(1, dirty) << "it was not written";
  EXPECT_EQ(0, Dirty());
  // The last write tells.
  AddedTo(1, 1, "b");
  ExpectHr(S_OK, List().Save(dom::kIidNode, document.root.Get()));
  EXPECT_EQ(1, ::Count(document.root, "./DISH_2/SAT"));
  AddedTo(2, 1, "c");
  ExpectHr(E_FAIL, List().Save(dom::kIidNode, document.root.Get()));
}

TEST_F(DishSatInfoMgr, NothingToSave) {
  const TextDocument document("<S/>");
  AddedTo(0, 1);
  ExpectHr(S_OK, List().Clear());
  ExpectHr(S_OK, List().SetDirty(1));
  ExpectHr(S_OK, List().Save(dom::kIidNode, document.root.Get()));
  EXPECT_EQ(0, Dirty());
}

// A record that does not tell what it is: an element is made for it, and stays empty.
TEST_F(DishSatInfoMgr, ARecordThatFailsToTell) {
  class Silent : public CDishSatInfo {
   public:
    HRESULT STDMETHODCALLTYPE GetBand(BSTR*) override { return E_ACCESSDENIED; }
  };
  const auto record = ComPtr<IDishSatInfo>::Attach(new Silent);
  record->SetDirty(1);
  ExpectHr(S_OK, List().AddDishSatInfo(record.Get(), 0));
  ExpectHr(E_ACCESSDENIED, List().Save(dom::kIidNode, Source().Get()));
  EXPECT_EQ("<DISH_1>\n\t<SAT/>\n</DISH_1>\n", Formatted(Container()));
  LONG dirty = 4711;
  ExpectHr(S_OK, record->GetDirty(&dirty));
  EXPECT_EQ(0, dirty);
}
