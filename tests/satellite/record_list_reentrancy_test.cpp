// Records that a host implements and that call back into their list in the middle of its work.
// Nothing is promised but that every reference stays balanced and no memory is touched after it
// went; the sanitizers watch.
#include "satellite/lists.h"

namespace {

constexpr UINT kCount = 6;

template <typename T>
class Reentrant : public ListTest<T> {
 protected:
  using Host = HostRecord<typename T::Record>;
  using Operation = std::function<void(typename T::List&)>;

  std::vector<Operation> Operations() {
    return {
        [](auto& list) {
          ComPtr<typename T::IRecord> found;
          T::ByIndex(list, kCount, found.Receive());
        },
        [](auto& list) {
          ComPtr<typename T::IRecord> found;
          T::ByIndex(list, 4711, found.Receive());
        },
        [](auto& list) {
          LONG dirty = 0;
          list.SetDirty(0);
          list.GetDirty(&dirty);
        },
        [](auto& list) {
          ComPtr<typename T::IRecord> added;
          T::Create(list, added.Receive());
          added->SetIndex(kCount - 1);
          T::Add(list, added.Get());
        },
        [](auto& list) {
          // A stranger, whose reference goes to the list: the records are numbered afresh.
          ComPtr<typename T::IRecord> stranger;
          T::Create(list, stranger.Receive());
          T::Remove(list, stranger.Detach());
        },
        [this](auto& list) { list.Load(dom::kIidNode, this->Source().Get()); },
        [this](auto& list) { list.Save(dom::kIidNode, this->Source().Get()); },
        [](auto& list) { list.Clear(); },
    };
  }

  /// Runs every operation with a hook in every record, one at a time, that fires once.
  void WithHook(const std::function<void(typename T::List&)>& hook) {
    int times = 0;
    const std::vector<Operation> operations = Operations();
    for (UINT which = 0; which < kCount; ++which) {
      for (const Operation& operation : operations) {
        ExpectHr(S_OK, this->List().Close());
        while (this->Elements() < 3) this->AddElement("x");
        std::vector<Host*> records;
        for (UINT i = 1; i <= kCount; ++i) {
          records.push_back(nullptr);
          this->AddedHost(i, &records.back());
        }
        bool fired = false;
        records[which]->onCall = [&] {
          if (fired) return;
          fired = true;
          ++times;
          hook(this->List());
        };
        operation(this->List());
        // The list is usable afterwards.
        ExpectHr(S_OK, this->List().Clear());
        EXPECT_EQ(0, Host::alive);
        this->Added(1);
        EXPECT_EQ(1U, this->Count());
      }
    }
    // Nearly every operation asks every record; some lists do not ask whether they are dirty.
    EXPECT_GE(times, 24);
  }
};

TYPED_TEST_SUITE(Reentrant, AllLists);

}  // namespace

TYPED_TEST(Reentrant, RecordsThatClearTheirList) {
  this->WithHook([](auto& list) { list.Clear(); });
}

TYPED_TEST(Reentrant, RecordsThatCloseTheirList) {
  this->WithHook([](auto& list) { list.Close(); });
}

TYPED_TEST(Reentrant, RecordsThatRemoveTheFirst) {
  this->WithHook([](auto& list) {
    ComPtr<typename TypeParam::IRecord> first;
    if (FAILED(TypeParam::ByIndex(list, 1, first.Receive()))) return;
    TypeParam::Remove(list, first.Get());
  });
}

TYPED_TEST(Reentrant, RecordsThatRemoveTheLast) {
  this->WithHook([](auto& list) {
    ComPtr<typename TypeParam::IRecord> last;
    if (FAILED(TypeParam::ByIndex(list, kCount, last.Receive()))) return;
    TypeParam::Remove(list, last.Get());
  });
}

TYPED_TEST(Reentrant, RecordsThatAddOthers) {
  this->WithHook([](auto& list) {
    for (UINT index = 0; index < 20; ++index) {
      ComPtr<typename TypeParam::IRecord> other;
      TypeParam::Create(list, other.Receive());
      other->SetIndex(index);
      TypeParam::Add(list, other.Get());
    }
  });
}

// What a record did while it was asked stays, and what was loaded is placed in what is there then.
TYPED_TEST(Reentrant, LoadingIntoAListThatChangesMeanwhile) {
  HostRecord<typename TypeParam::Record>* raw = nullptr;
  this->AddedHost(9, &raw);
  for (const char* text : {"a", "b"}) this->AddElement(text);
  raw->onCall = [&] {
    raw->onCall = nullptr;
    this->Added(0);
  };
  this->Load();
  EXPECT_EQ(4U, this->Count());
  const auto order = this->Order();
  EXPECT_EQ(static_cast<void*>(static_cast<typename TypeParam::IRecord*>(raw)),
            static_cast<void*>(order[3].Get()));
}

// Records that are released last by the list may use it while they go.
TYPED_TEST(Reentrant, RecordsThatUseTheListWhileTheyGo) {
  class Farewell : public TypeParam::Record {
   public:
    Farewell(typename TypeParam::List& list, std::vector<UINT>& counts)
        : m_list(list), m_counts(counts) {}
    ~Farewell() override {
      UINT count = 4711;
      TypeParam::Count(m_list, &count);
      m_counts.push_back(count);
    }

   private:
    typename TypeParam::List& m_list;
    std::vector<UINT>& m_counts;
  };
  std::vector<UINT> counts;
  typename TypeParam::IRecord* raw = nullptr;
  for (int i = 0; i < 3; ++i) {
    const auto record =
        ComPtr<typename TypeParam::IRecord>::Attach(new Farewell(this->List(), counts));
    raw = record.Get();
    ExpectHr(S_OK, TypeParam::Add(this->List(), raw));
  }
  ExpectHr(S_OK, TypeParam::Remove(this->List(), raw));
  EXPECT_EQ(std::vector<UINT>{2}, counts);
  ExpectHr(S_OK, this->List().Clear());
  EXPECT_EQ((std::vector<UINT>{2, 0, 0}), counts);
}
