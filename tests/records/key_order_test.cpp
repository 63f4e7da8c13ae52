// How few records a list looks at.
#include "records/key_order.h"

#include <gtest/gtest.h>

#include "records/record_list.h"
#include "satellite/transponder_info.h"
#include "support/expect.h"

namespace {

// The index of transponders, which counts how often it is looked at.
struct CountedIndex : CTransponderInfo::Index {
  static inline std::size_t reads = 0;
  static std::optional<UINT> Of(const CTransponderInfo& record) {
    ++reads;
    return CTransponderInfo::Index::Of(record);
  }
};

struct CountedTraits : CTransponderInfo::Traits {
  using Index = CountedIndex;
  using Keys = std::tuple<KeyOrder<CTransponderInfo, ITransponderInfo, CountedIndex>>;
};

using List = RecordList<CountedTraits>;

constexpr UINT kCount = 20000;

// Reads for one piece of work.
template <typename Work>
std::size_t Reads(Work work) {
  CountedIndex::reads = 0;
  work();
  return CountedIndex::reads;
}

void AddOne(List& list, UINT index) {
  ComPtr<ITransponderInfo> record;
  ExpectHr(S_OK, CTransponderInfo::CreateInstance(record.Receive()));
  record->SetIndex(index);
  ExpectHr(S_OK, list.Add(record.Get()));
}

UINT FoundPlace(List& list, UINT index) {
  ComPtr<ITransponderInfo> found;
  if (list.FindByIndex(index, found.Receive()) != S_OK) return kCount;
  UINT place = kCount;
  found->GetIndex(&place);
  return place;
}

TEST(KeyOrder, AscendingAddsLookAtTheEnd) {
  List list;
  EXPECT_LE(Reads([&] {
              for (UINT index = 1; index <= kCount; ++index) AddOne(list, index);
            }),
            std::size_t{8} * kCount);
  EXPECT_EQ(kCount, list.Count());
}

TEST(KeyOrder, DescendingAddsHalve) {
  constexpr UINT kFew = 2000;
  List list;
  EXPECT_LE(Reads([&] {
              for (UINT index = kFew; index > 0; --index) AddOne(list, index);
            }),
            std::size_t{24} * kFew);
  EXPECT_EQ(1U, FoundPlace(list, 1));
}

TEST(KeyOrder, RecordNAtPlaceNIsFoundAtOnce) {
  for (const UINT first : {0U, 1U}) {
    List list;
    for (UINT index = first; index < kCount + first; ++index) AddOne(list, index);
    for (const UINT index : {first, first + 1, kCount / 2, kCount + first - 1}) {
      EXPECT_LE(Reads([&] { EXPECT_EQ(index, FoundPlace(list, index)); }), 8U) << index;
    }
  }
}

TEST(KeyOrder, ElsewhereIsFoundByHalving) {
  List list;
  for (UINT index = 0; index < kCount; ++index) AddOne(list, 3 * index + 7);
  EXPECT_LE(Reads([&] { EXPECT_EQ(301U, FoundPlace(list, 301)); }), 24U);
  EXPECT_LE(Reads([&] { EXPECT_EQ(kCount, FoundPlace(list, 302)); }), 24U);
}

// Numbered from the back, every value falls.
TEST(KeyOrder, FallingValuesAreFoundInATable) {
  List list;
  for (UINT index = 1; index <= kCount; ++index) AddOne(list, index);
  list.Number(Numbering::FromBack);
  EXPECT_LE(Reads([&] {
              for (UINT index = 1; index <= kCount; ++index) {
                ASSERT_EQ(index, FoundPlace(list, index));
              }
            }),
            std::size_t{16} * kCount);
}

}  // namespace
