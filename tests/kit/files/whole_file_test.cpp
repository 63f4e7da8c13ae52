#include "kit/files/whole_file.h"

#include <vector>

#include "kit/home.h"

namespace zortunedex::kit {

namespace {

class WholeFiles : public testing::Test {
 protected:
  std::filesystem::path PathOf(const std::string& name) const {
    return whole_file::PathOf(m_directory.File(name));
  }

  const TempDir m_directory;
};

/// More than is read at once, and no power of two.
std::string ManyBytes() {
  std::string bytes;
  for (unsigned i = 0; bytes.size() < 300001; ++i) bytes += static_cast<char>(i * i >> 3);
  return bytes;
}

TEST_F(WholeFiles, AreComparedToTheLastByte) {
  const std::string bytes = ManyBytes();
  m_directory.Write("file", bytes);
  EXPECT_TRUE(whole_file::Holds(PathOf("file"), bytes));
  EXPECT_FALSE(whole_file::Holds(PathOf("file"), bytes + '\0'));
  EXPECT_FALSE(whole_file::Holds(PathOf("file"), std::string_view(bytes).substr(1)));
  EXPECT_FALSE(
      whole_file::Holds(PathOf("file"), std::string_view(bytes).substr(0, bytes.size() - 1)));
  for (const std::size_t place : {std::size_t{0}, bytes.size() / 2, bytes.size() - 1}) {
    std::string other = bytes;
    other[place] ^= 1;
    EXPECT_FALSE(whole_file::Holds(PathOf("file"), other)) << place;
  }
}

TEST_F(WholeFiles, HoldNothingWhereThereIsNone) {
  m_directory.Write("empty", "");
  std::filesystem::create_directory(PathOf("folder"));
  EXPECT_TRUE(whole_file::Holds(PathOf("empty"), ""));
  EXPECT_FALSE(whole_file::Holds(PathOf("empty"), "a"));
  EXPECT_FALSE(whole_file::Holds(PathOf("missing"), ""));
  EXPECT_FALSE(whole_file::Holds(PathOf("folder"), ""));
}

TEST_F(WholeFiles, AreReadInPartsAsFarAsIsAskedFor) {
  const std::string bytes = ManyBytes();
  m_directory.Write("file", bytes);
  std::string read;
  std::vector<std::size_t> sizes;
  EXPECT_TRUE(whole_file::ReadParts(PathOf("file"), [&](std::string_view part) {
    read += part;
    sizes.push_back(part.size());
    return true;
  }));
  EXPECT_EQ(bytes, read);
  ASSERT_LT(1U, sizes.size());
  std::size_t first = 0;
  EXPECT_TRUE(whole_file::ReadParts(PathOf("file"), [&](std::string_view part) {
    first += part.size();
    return false;
  }));
  EXPECT_EQ(sizes.front(), first);
  EXPECT_FALSE(whole_file::ReadParts(PathOf("missing"), [](std::string_view) { return true; }));
}

}  // namespace

}  // namespace zortunedex::kit
