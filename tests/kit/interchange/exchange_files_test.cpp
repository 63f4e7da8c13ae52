#include "kit/interchange/list/exchange_files.h"

#include "kit/failure.h"
#include "kit/home.h"

namespace zortunedex::kit {

namespace {

using interchange::Output;

TEST(ExchangeFiles, AreThoseOfAFolderThatIsMade) {
  const Home home(Home::Start::Empty);
  const std::string folder = home.Files().File("out");
  interchange::WriteFiles({{{"a", "1"}, {"b", "2"}}, {}}, folder, true);
  const interchange::Input input = interchange::ReadInput(folder);
  EXPECT_TRUE(input.isFolder);
  EXPECT_EQ((std::vector<std::string>{"a", "b"}), input.names);
  EXPECT_EQ("2", input.read("b"));
  EXPECT_EQ(std::nullopt, input.read("c"));
}

TEST(ExchangeFiles, ArePutBackWhereOneCannotBeWritten) {
  const Home home(Home::Start::Empty);
  const std::string folder = home.Files().File("out");
  interchange::WriteFiles({{{"a", "old"}}, {}}, folder, true);
  std::filesystem::create_directory(home.Files().File("out/c"));
  EXPECT_THROW(
      interchange::WriteFiles({{{"a", "new"}, {"b", "new"}, {"c", "new"}}, {}}, folder, true),
      Failure);
  EXPECT_EQ("old", home.Files().Read("out/a"));
  EXPECT_FALSE(home.Files().Has("out/b"));
}

}  // namespace

}  // namespace zortunedex::kit
