// A host's thread may have a locale of its own, and with it another code page: a check finds what
// it finds there, whichever thread of its own looks.
#include "kit/check/found_in_turn.h"
#include "kit/home.h"
#include "platform/com.h"

namespace zortunedex::kit {

namespace {

class JapaneseThread {
 public:
  JapaneseThread() { SetThreadLocale(MAKELCID(MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT), 0)); }
  JapaneseThread(const JapaneseThread&) = delete;
  JapaneseThread& operator=(const JapaneseThread&) = delete;
  ~JapaneseThread() { SetThreadLocale(m_before); }

 private:
  const LCID m_before = GetThreadLocale();
};

TEST(CheckLocale, IsThatOfTheThreadThatAsks) {
  const Home home;
  std::string bytes = home.Channels();
  // A letter of 1252, which no character of 932 is made of here.
  bytes.insert(bytes.find("name=\"", bytes.find("<Channel ")) + 6, "\xE9");
  home.Files().Write("ChanInfo.xml", bytes);
  const std::string usual = FoundInTurn(home.Path());
  EXPECT_EQ(usual, TextOfFindings(check::CheckDirectory(home.Path(), {})));
  const JapaneseThread thread;
  const std::string japanese = FoundInTurn(home.Path());
  EXPECT_NE(usual, japanese);
  EXPECT_EQ(japanese, TextOfFindings(check::CheckDirectory(home.Path(), {})));
}

}  // namespace

}  // namespace zortunedex::kit
