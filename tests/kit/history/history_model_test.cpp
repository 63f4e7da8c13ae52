// Long random sequences of changes, of steps back and forth and of what others write, against a
// model that keeps whole copies.
#include "kit/failure.h"
#include "kit/history/recorded_home.h"
#include "kit/home.h"
#include "support/random.h"

namespace zortunedex::kit {

namespace {

using history::Number;

struct Copy {
  std::optional<Number> parent;
  Texts texts;
};

class Model {
 public:
  explicit Model(Texts texts) : now(std::move(texts)) {}

  void RecordPresent() {
    if (!head || copies.at(*head).texts != now) Add(now);
  }
  void Change(const Texts& texts) {
    if (texts == now) return;
    RecordPresent();
    Add(texts);
    now = texts;
    Prune(50);
  }
  bool Walk(bool isBack) {
    if (copies.empty()) return false;
    RecordPresent();
    std::optional<Number> next;
    if (isBack) {
      next = copies.at(*head).parent;
    } else {
      for (const auto& [number, copy] : copies) {
        if (copy.parent == head) next = number;
      }
    }
    if (!next || !copies.contains(*next)) return false;
    head = next;
    now = copies.at(*head).texts;
    return true;
  }
  void Prune(std::size_t keep) {
    std::map<Number, Copy> kept;
    for (auto copy = copies.rbegin(); copy != copies.rend(); ++copy) {
      if (kept.size() < keep || copy->first == head) kept.insert(*copy);
    }
    copies = kept;
  }

  Texts now;
  std::map<Number, Copy> copies;
  std::optional<Number> head;

 private:
  void Add(const Texts& texts) {
    const Number number = copies.empty() ? 1 : copies.rbegin()->first + 1;
    copies[number] = {head, texts};
    head = number;
  }
};

Texts RandomTexts(Random& random, Texts texts) {
  const char* names[] = {"ChanInfo.xml", "PreSetChannelInfo.xml", "SatelliteInfo.xml",
                         "UserSettings.xml", "base-49-64.json"};
  for (std::uint32_t count = random(3); count-- > 0;) {
    const char* name = names[random(5)];
    if (random(4) == 0) {
      texts.erase(name);
    } else {
      texts[name] = std::string(random(200), static_cast<char>('a' + random(3)));
    }
  }
  return texts;
}

void ExpectSame(const Model& model, const RecordedHome& home) {
  ASSERT_EQ(model.now, home.Now());
  const history::Store store = home.Store();
  ASSERT_EQ(model.copies.size(), store.Snapshots().size());
  for (const auto& [number, copy] : model.copies) {
    ASSERT_EQ(copy.texts, RecordedHome::Present(store.Read(store.Find(number)))) << number;
    ASSERT_EQ(copy.parent, store.Find(number).parent) << number;
  }
  ASSERT_EQ(model.head.has_value(), store.Head() != nullptr);
  if (model.head) {
    ASSERT_EQ(*model.head, store.Head()->number);
  }
}

class Sequence {
 public:
  explicit Sequence(std::uint32_t seed) : m_random(seed), m_model(RandomTexts(m_random, {})) {
    OutsideChange();
  }

  void Step() {
    switch (m_random(8)) {
      case 0:
        m_model.now = RandomTexts(m_random, m_model.now);
        return OutsideChange();
      case 1:
        return Walk(true);
      case 2:
        return Walk(false);
      case 3:
        return Restore();
      case 4:
        return Unrecorded();
      case 5:
        if (m_random(4) == 0) return Prune();
        return Walk(true);
      default:
        const Texts texts = RandomTexts(m_random, m_model.now);
        m_home.Change(texts);
        m_model.Change(texts);
    }
  }

  void Expect() const {
    ExpectSame(m_model, m_home);
    if (m_home.Files().Has("tunedex-history/lock")) ExpectWholeHistory(m_home.Files().Path());
  }

 private:
  void OutsideChange() {
    // Bases stand in the history's folder.
    if (!m_home.Files().Has(history::kFolder)) m_model.now.erase("base-49-64.json");
    m_home.ChangeOutside(m_model.now);
  }

  void Walk(bool isBack) {
    bool isDone = true;
    try {
      isBack ? history::Undo(m_home.Settings()) : history::Redo(m_home.Settings());
    } catch (const Failure&) {
      isDone = false;
    }
    EXPECT_EQ(m_model.Walk(isBack), isDone);
  }

  void Restore() {
    if (m_model.copies.empty()) return;
    auto copy = m_model.copies.begin();
    std::advance(copy, m_random(static_cast<std::uint32_t>(m_model.copies.size())));
    const Number number = copy->first;
    const Texts wanted = copy->second.texts;
    history::Restore(m_home.Settings(), number, "");
    m_model.Change(wanted);
  }

  void Unrecorded() {
    history::ChangeSettings settings = m_home.Settings();
    settings.isRecorded = false;
    m_model.now = RandomTexts(m_random, m_model.now);
    history::MakeChange(settings, RecordedHome::Writing(m_model.now));
  }

  void Prune() {
    const std::size_t keep = 1 + m_random(5);
    history::Prune(m_home.Settings(), keep);
    m_model.Prune(keep);
  }

  Random m_random;
  Model m_model;
  RecordedHome m_home;
};

TEST(HistoryModel, EveryStepLeavesWhatTheModelHas) {
  for (std::uint32_t seed = 0; seed < 4; ++seed) {
    Sequence sequence(seed);
    for (int step = 0; step < 60; ++step) {
      SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
      sequence.Step();
      sequence.Expect();
      if (testing::Test::HasFailure()) return;
    }
  }
}

}  // namespace

}  // namespace zortunedex::kit
