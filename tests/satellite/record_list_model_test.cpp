// Random operations on every list, and on a plain vector that does what the list is said to do.
#include <algorithm>

#include "satellite/lists.h"
#include "support/random.h"

namespace {

template <typename T>
class ModelList : public ListTest<T> {
 protected:
  using Record = ComPtr<typename T::IRecord>;

  static UINT StoredIndex(const Record& record) { return ListTest<T>::IndexOf(record); }

  void Insert(const Record& record) {
    auto place = m_model.begin();
    while (place != m_model.end() && StoredIndex(*place) < StoredIndex(record)) ++place;
    m_model.insert(place, record);
  }

  void ExpectSame(UINT end = 12) {
    ASSERT_EQ(m_model.size(), this->Count());
    for (UINT index = 0; index < end; ++index) {
      const auto first = std::find_if(m_model.begin(), m_model.end(), [&](const Record& record) {
        return StoredIndex(record) == index;
      });
      ASSERT_EQ(first == m_model.end() ? nullptr : first->Get(), this->At(index).Get()) << index;
    }
    for (const Record& record : m_all) {
      const auto held = std::count_if(m_model.begin(), m_model.end(), [&](const Record& other) {
        return other.Get() == record.Get();
      });
      // The model's references, this one, and as many of the list as of the model.
      ExpectRefCount(static_cast<ULONG>(1 + 2 * held), record.Get());
    }
  }

  void NumberModel() {
    UINT number = 0;
    for (const Record& record : m_model) record->SetIndex(++number);
  }

  std::vector<Record> m_model;
  std::vector<Record> m_all;
};

TYPED_TEST_SUITE(ModelList, AllLists);

}  // namespace

TYPED_TEST(ModelList, RandomOperations) {
  Random random(17);
  LONG dirty = 0;
  for (int i = 0; i < 8; ++i) this->m_all.push_back(this->Make());
  for (int step = 0; step < 1500; ++step) {
    SCOPED_TRACE(step);
    const auto& record = this->m_all[random(8)];
    switch (random(8)) {
      case 0:
      case 1:
      case 2:
        record->SetIndex(random(10));
        [[fallthrough]];
      case 3:
        ExpectHr(S_OK, TypeParam::Add(this->List(), record.Get()));
        this->Insert(record);
        dirty = 1;
        break;
      case 4:
      case 5: {
        auto& model = this->m_model;
        const auto found = std::find_if(model.begin(), model.end(), [&](const auto& other) {
          return other.Get() == record.Get();
        });
        if (found == model.end()) record->AddRef();  // goes to the list
        ExpectHr(S_OK, TypeParam::Remove(this->List(), record.Get()));
        if (found != model.end()) model.erase(found);
        this->NumberModel();
        dirty = 1;
        break;
      }
      case 6:
        record->SetIndex(random(10));
        break;
      default:
        if (random(6) == 0) {
          ExpectHr(S_OK, this->List().Clear());
          this->m_model.clear();
          dirty = 0;
        } else {
          dirty = static_cast<LONG>(random(2));
          ExpectHr(S_OK, this->List().SetDirty(dirty));
        }
    }
    this->ExpectSame();
    ASSERT_EQ(dirty, this->Dirty());
    if (this->HasFatalFailure()) return;
  }
  // Numbering both shows the whole order.
  this->Number();
  this->NumberModel();
  this->ExpectSame(static_cast<UINT>(this->m_model.size()) + 1);
}
