#include "module/registry_script.h"

#include "support/expect.h"
#include "support/random.h"

namespace {

using Key = RegistryScript::Key;
using Action = Key::Action;
using registry::Root;

RegistryScript Parse(std::string_view text,
                     std::source_location where = std::source_location::current()) {
  RegistryScript script;
  ExpectHr(S_OK, script.Parse(text, {{"MODULE", "it's"}}), where);
  return script;
}

// The one key of a script, under HKCR.
Key ParseKey(const std::string& text,
             std::source_location where = std::source_location::current()) {
  const RegistryScript script = Parse("HKCR { " + text + " }", where);
  if (script.blocks.size() != 1 || script.blocks[0].top.keys.size() != 1) {
    ADD_FAILURE_AT(where.file_name(), static_cast<int>(where.line())) << "not one key";
    return {};
  }
  return script.blocks[0].top.keys[0];
}

void ExpectRefused(std::string_view text,
                   std::source_location where = std::source_location::current()) {
  RegistryScript script = Parse("HKCR { a }");
  ExpectHr(E_INVALIDARG, script.Parse(text, {{"MODULE", "it's"}}), where);
  EXPECT_TRUE(script.blocks.empty()) << where.line();
}

void ExpectKeyRefused(const std::string& text,
                      std::source_location where = std::source_location::current()) {
  ExpectRefused("HKCR { " + text + " }", where);
}

std::string TextOf(const std::optional<RegistryScript::Data>& data) {
  return data && std::holds_alternative<std::string>(*data) ? std::get<std::string>(*data) : "?";
}

std::uint32_t NumberOf(const std::string& literal) {
  const Key key = ParseKey("a = d " + literal);
  return std::get<std::uint32_t>(key.data.value());
}

std::string Nested(std::size_t depth) {
  std::string script = "HKCR {";
  for (std::size_t i = 1; i < depth; ++i) script += " a {";
  for (std::size_t i = 0; i < depth; ++i) script += " }";
  return script;
}

}  // namespace

TEST(RegistryScript, Roots) {
  const RegistryScript script = Parse(
      "HKCR { } HKEY_CLASSES_ROOT { } hkcu { } HKEY_Current_User { } HKLM { } "
      "HKEY_LOCAL_MACHINE { }");
  const Root expected[] = {Root::ClassesRoot, Root::ClassesRoot,  Root::CurrentUser,
                           Root::CurrentUser, Root::LocalMachine, Root::LocalMachine};
  ASSERT_EQ(std::size(expected), script.blocks.size());
  for (std::size_t i = 0; i < script.blocks.size(); ++i) {
    EXPECT_EQ(expected[i], script.blocks[i].root) << i;
    EXPECT_TRUE(script.blocks[i].top.keys.empty()) << i;
  }
}

TEST(RegistryScript, Keys) {
  EXPECT_EQ(Action::Plain, ParseKey("'a b'").action);
  EXPECT_EQ("a b", ParseKey("'a b'").name);
  EXPECT_EQ("{guid}", ParseKey("{guid}").name);
  EXPECT_EQ(Action::NoRemove, ParseKey("NoRemove a").action);
  EXPECT_EQ(Action::ForceRemove, ParseKey("FORCEREMOVE a").action);
  EXPECT_EQ(Action::Delete, ParseKey("delete 'a'").action);
  EXPECT_EQ("a", ParseKey("Delete a").name);
  EXPECT_FALSE(ParseKey("a").data);
  // Quoted words are names.
  EXPECT_EQ("NoRemove", ParseKey("'NoRemove'").name);
  EXPECT_EQ("val", ParseKey("NoRemove 'val' { }").name);
}

TEST(RegistryScript, KeysStandInKeys) {
  const Key key = ParseKey("a = s 'x' { b { c } val n = s 'v' Delete d val m = d 1 }");
  ASSERT_EQ(2U, key.keys.size());
  EXPECT_EQ("x", TextOf(key.data));
  EXPECT_EQ("b", key.keys[0].name);
  ASSERT_EQ(1U, key.keys[0].keys.size());
  EXPECT_EQ("c", key.keys[0].keys[0].name);
  EXPECT_EQ("d", key.keys[1].name);
  EXPECT_EQ(Action::Delete, key.keys[1].action);
  ASSERT_EQ(2U, key.values.size());
  EXPECT_EQ("n", key.values[0].name);
  EXPECT_EQ("v", TextOf(key.values[0].data));
  EXPECT_EQ(1U, std::get<std::uint32_t>(key.values[1].data));
}

TEST(RegistryScript, Texts) {
  EXPECT_EQ("", TextOf(ParseKey("a = s ''").data));
  EXPECT_EQ("word", TextOf(ParseKey("a = S word").data));
  EXPECT_EQ("it's \"q\" {", TextOf(ParseKey("a = s 'it''s \"q\" {'").data));
  EXPECT_EQ("<it's>", TextOf(ParseKey("a = s '<%MODULE%>'").data));
  EXPECT_EQ("50%", TextOf(ParseKey("a = s '50%%'").data));
}

TEST(RegistryScript, Numbers) {
  EXPECT_EQ(0U, NumberOf("0"));
  EXPECT_EQ(4294967295U, NumberOf("'4294967295'"));
  EXPECT_EQ(255U, NumberOf("0xFf"));
  EXPECT_EQ(0xFFFFFFFFU, NumberOf("&HFFFFFFFF"));
  for (const char* literal : {"''", "x", "-1", "1x", "' 1'", "4294967296", "0x", "0x100000000"}) {
    ExpectKeyRefused(std::string("a = d ") + literal);
  }
}

TEST(RegistryScript, TextLists) {
  const auto texts = [](const std::string& literal) {
    return std::get<RegistryScript::Texts>(ParseKey("a = m " + literal).data.value());
  };
  EXPECT_EQ((RegistryScript::Texts{"one", "two words"}), texts("'one\\0two words'"));
  EXPECT_EQ((RegistryScript::Texts{"one"}), texts("'one\\0'"));
  EXPECT_EQ((RegistryScript::Texts{}), texts("''"));
  EXPECT_EQ((RegistryScript::Texts{"a\\b"}), texts("a\\b"));
  ExpectKeyRefused("a = m 'one\\0\\0two'");
  ExpectKeyRefused("a = m '\\0one'");
}

TEST(RegistryScript, Bytes) {
  const auto bytes = [](const std::string& literal) {
    return std::get<RegistryScript::Bytes>(ParseKey("a = b " + literal).data.value()).bytes;
  };
  EXPECT_EQ(std::string("\0\x7f\xAb\xff", 4), bytes("'007FaBff'"));
  EXPECT_EQ("", bytes("''"));
  ExpectKeyRefused("a = b '0'");
  ExpectKeyRefused("a = b '0g'");
  ExpectKeyRefused("a = b '00 11'");
  ExpectKeyRefused("a = b '+1'");
}

TEST(RegistryScript, WhatIsNotWholeIsRefused) {
  const std::string whole = "HKCR { NoRemove 'a b' = s 'x''y' { val 'n' = d '1' Delete c } }";
  Parse(whole);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    ExpectRefused(whole.substr(0, length));
  }
  ExpectRefused(" \r\n");
}

TEST(RegistryScript, OneErrorRefusesTheWhole) {
  for (const char* text :
       {"{ }", "HKCR", "HKCR a", "HKCR { } }", "HKCR { } a", "HKEY_USERS { }", "'HKCR' { }",
        "HKCR { } HKCR { a = }", "HKCR{ }", "HKCR { %NAME% }", "HKCR { % }"}) {
    ExpectRefused(text);
  }
  for (const char* text : {"=",
                           "a = x",
                           "a = s",
                           "a = s { }",
                           "a = x 'y'",
                           "a = 's' 'y'",
                           "NoRemove",
                           "ForceRemove { }",
                           "NoRemove ForceRemove a",
                           "NoRemove a = s 1 ForceRemove",
                           "Delete",
                           "Delete a = s 'x'",
                           "Delete a { }",
                           "''",
                           "'a\\b'",
                           "a\\b",
                           "Delete 'a\\b'",
                           "'a\nb'",
                           "val n = s 'x'",
                           "a { val = s 'x' }",
                           "a { val n }",
                           "a { val '' = s 'x' }",
                           "a { val n = s 'x' { } }",
                           "a = s 'x' = s 'y'"}) {
    ExpectKeyRefused(text);
  }
  ExpectRefused(std::string_view("HKCR { a\0 }", 11));
}

TEST(RegistryScript, NamesAreAsLongAsTheRegistryTakes) {
  EXPECT_EQ(255U, ParseKey(std::string(255, 'x')).name.size());
  ExpectKeyRefused(std::string(256, 'x'));
}

TEST(RegistryScript, SharedKeysAreNotDeleted) {
  for (const char* name : {"CLSID", "clsid", "'TypeLib'", "'Component Categories'", "Software"}) {
    ExpectKeyRefused(std::string("ForceRemove ") + name);
    ExpectKeyRefused(std::string("Delete ") + name);
    ExpectKeyRefused(std::string("NoRemove a { ForceRemove ") + name + " }");
    EXPECT_EQ(Action::NoRemove, ParseKey(std::string("NoRemove ") + name).action);
  }
}

TEST(RegistryScript, NestingIsBounded) {
  EXPECT_EQ(1U, Parse(Nested(RegistryScript::kDeepest)).blocks.size());
  ExpectRefused(Nested(RegistryScript::kDeepest + 1));
  ExpectRefused(Nested(100000));
}

TEST(RegistryScript, AnyBytesComeToAnEnd) {
  static constexpr const char* kPieces[] = {
      "HKCR",     "{",  "}",  "'",   "''",  "'a'",      "a",           "=",      "s",
      "d",        "m",  "b",  "1",   "val", "NoRemove", "ForceRemove", "Delete", "%",
      "%MODULE%", "%%", "\\", "\\0", " ",   "\n",       "CLSID",       "HKLM",
  };
  Random random(20240611);
  std::size_t parsed = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string text = random(2) == 0 ? "HKCR { a " : "";
    const std::size_t count = random(24);
    for (std::size_t i = 0; i < count; ++i) {
      if (random(16) == 0) {
        text += static_cast<char>(random(256));
      } else {
        text.append(kPieces[random(std::size(kPieces))]).append(random(4) == 0 ? "" : " ");
      }
    }
    RegistryScript script;
    const HRESULT hr = script.Parse(text, {{"MODULE", "it's"}});
    ASSERT_TRUE(hr == S_OK || hr == E_INVALIDARG) << HrText(hr);
    ASSERT_EQ(hr == S_OK, !script.blocks.empty()) << text;
    parsed += hr == S_OK;
  }
  EXPECT_GT(parsed, 20U);
}
