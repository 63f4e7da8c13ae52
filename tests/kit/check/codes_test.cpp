#include "kit/check/findings/codes.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace zortunedex::kit {

namespace {

TEST(CheckCodes, AreFoundByName) {
  for (const check::Code& code : check::Codes()) EXPECT_EQ(&code, check::FindCode(code.name));
  EXPECT_EQ(nullptr, check::FindCode("ZT000"));
  EXPECT_EQ(nullptr, check::FindCode("ZT999"));
  EXPECT_EQ(nullptr, check::FindCode(""));
}

// One line each, with the severity and the option that the table of the program has.
TEST(CheckCodes, AreInTheDocument) {
  std::ifstream file(ZORTUNEDEX_SAMPLES "/../docs/check.md", std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  for (const check::Code& code : check::Codes()) {
    const std::string begin =
        "| " + std::string(code.name) + " | " + check::NameOf(code.severity) + ": ";
    const std::size_t line = text.find("\n" + begin);
    ASSERT_NE(std::string::npos, line) << begin;
    const std::string row = text.substr(line + 1, text.find('\n', line + 1) - line - 1);
    const char* option = check::NameOf(code.option);
    EXPECT_TRUE(option == nullptr || row.find(option) != std::string::npos) << row;
    EXPECT_EQ(code.repair == check::Repair::No, row.ends_with("| none |")) << row;
  }
}

}  // namespace

}  // namespace zortunedex::kit
