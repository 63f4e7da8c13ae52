#include "kit/saving/stored_form.h"

#include <gtest/gtest.h>

namespace zortunedex::kit {

namespace {

std::string NameOf(OLECHAR unit, bool preFormatted = false) {
  const OLECHAR text[] = {'a', unit, 'b'};
  return Unwritable(WideView(text, 3), preFormatted).value_or("none");
}

TEST(Unwritable, NamesCharactersThatXmlDoesNotHave) {
  EXPECT_EQ("U+0000", NameOf(0));
  EXPECT_EQ("U+001F", NameOf(0x1F));
  EXPECT_EQ("none", NameOf(0x20));
  EXPECT_EQ("none", NameOf(0x7F));
  EXPECT_EQ("U+D800", NameOf(0xD800));
  EXPECT_EQ("U+DFFF", NameOf(0xDFFF));
  EXPECT_EQ("none", NameOf(0xE000));
  EXPECT_EQ("none", NameOf(0xFFFD));
  EXPECT_EQ("U+FFFE", NameOf(0xFFFE));
  EXPECT_EQ("U+FFFF", NameOf(0xFFFF));
}

TEST(Unwritable, NamesWhatThePreFormattedFormWritesAsItStands) {
  for (const char markup : {'"', '<', '&'}) {
    EXPECT_EQ("none", NameOf(static_cast<OLECHAR>(markup)));
    EXPECT_EQ(std::string("'") + markup + "'", NameOf(static_cast<OLECHAR>(markup), true));
  }
  EXPECT_EQ("none", NameOf('\t'));
  EXPECT_EQ("U+0009", NameOf('\t', true));
  EXPECT_EQ("none", NameOf('>', true));
}

}  // namespace

}  // namespace zortunedex::kit
