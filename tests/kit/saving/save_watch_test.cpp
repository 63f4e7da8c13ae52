#include "kit/saving/save_watch.h"

#include "kit/home.h"

namespace zortunedex::kit {

namespace {

TEST(SaveWatch, TellsWhatBecameOfTheFile) {
  const Home home(Home::Start::Empty);
  home.Files().Write("a.xml", "old");
  const SaveWatch watch(home.Path(), "a.xml");
  watch.Run([] {});
  // Nothing hinders a save, so the message is the save's own.
  ExpectRaised<Failure>("a.xml was not written; the file is unchanged", [&] {
    watch.Run([] { throw Failure{E_FAIL, "a.xml was not written"}; });
  });
  home.Files().Write("a.xml", "new");
  ExpectRaised<Failure>("a.xml is not what was meant; the file was replaced", [&] {
    watch.Run([] { throw Failure{E_FAIL, "a.xml is not what was meant"}; });
  });
}

TEST(SaveWatch, FindsTheCause) {
  const Home home(Home::Start::Empty);
  std::filesystem::create_directory(home.Files().File("a.xml"));
  ExpectRaised<Failure>("a.xml could not be written: it is a folder; the file is unchanged", [&] {
    SaveWatch(home.Path(), "a.xml").Run([] { throw Failure{E_FAIL, "a.xml was not written"}; });
  });
  const std::string missing = home.Files().File("missing");
  ExpectRaised<Failure>(
      "a.xml could not be written: No such file or directory; the file is unchanged", [&] {
        SaveWatch(missing, "a.xml").Run([] { throw Failure{E_FAIL, "not written"}; });
      });
}

TEST(SaveWatch, KeepsTheResult) {
  const Home home(Home::Start::Empty);
  try {
    SaveWatch(home.Path(), "a.xml").Run([] { throw Failure{E_ACCESSDENIED, "no"}; });
    ADD_FAILURE();
  } catch (const Failure& failure) {
    EXPECT_EQ(E_ACCESSDENIED, failure.Result());
  }
}

}  // namespace

}  // namespace zortunedex::kit
