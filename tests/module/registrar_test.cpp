// What scripts do to the registry.
#include "module/registrar.h"

#include "support/expect.h"
#include "support/registry_sandbox.h"

namespace {

using Contents = RegistrySandbox::Contents;
using registry::Root;

class RegistrarTest : public testing::Test {
 protected:
  static RegistryScript Parse(const std::string& text) {
    RegistryScript script;
    ExpectHr(S_OK, script.Parse(text, {{"MODULE", "/it's here"}}));
    return script;
  }
  static HRESULT Register(const std::string& text,
                          RegistrationScope scope = RegistrationScope::Machine) {
    return Registrar(scope).Register(Parse(text));
  }
  static HRESULT Unregister(const std::string& text,
                            RegistrationScope scope = RegistrationScope::Machine) {
    return Registrar(scope).Unregister(Parse(text));
  }
  static void Set(std::string_view key, std::string_view name, std::string_view value) {
    ExpectHr(S_OK, registry::SetText(Root::ClassesRoot, key, name, value));
  }

  RegistrySandbox m_sandbox;
};

const std::string kClasses = "HKEY_CLASSES_ROOT\\";

}  // namespace

TEST_F(RegistrarTest, WritesEveryKind) {
  ExpectHr(S_OK, Register("HKCR { a = s 'text' { val n = d 258 val t = s '%MODULE%' val l = m "
                          "'b\\0c' val x = b '00ff' e = d 1 } } HKLM { l } HKCU { u = b '' }"));
  const Contents expected = {
      {kClasses + "a",
       {{"", "\"text\""},
        {"l", "hex(7):62,00,00,00,63,00,00,00,00,00"},
        {"n", "dword:00000102"},
        {"t", "\"/it's here\""},
        {"x", "hex:00,ff"}}},
      {kClasses + "a\\e", {{"", "dword:00000001"}}},
      {"HKEY_CURRENT_USER\\u", {{"", "hex:"}}},
      {"HKEY_LOCAL_MACHINE\\l", {}},
  };
  EXPECT_EQ(expected, m_sandbox.Read());
}

TEST_F(RegistrarTest, KeepsWhatIsThereWithoutForce) {
  Set("a", "", "old");
  Set("a", "foreign", "kept");
  Set("a\\b", "n", "kept");
  ExpectHr(S_OK, Register("HKCR { a = s 'new' { b { val m = s 'x' } } }"));
  const Contents expected = {{kClasses + "a", {{"", "\"new\""}, {"foreign", "\"kept\""}}},
                             {kClasses + "a\\b", {{"m", "\"x\""}, {"n", "\"kept\""}}}};
  EXPECT_EQ(expected, m_sandbox.Read());
}

TEST_F(RegistrarTest, ForceMakesAKeyAnew) {
  Set("a", "n", "old");
  Set("a\\b\\c", "n", "old");
  Set("ab", "n", "kept");
  ExpectHr(S_OK, Register("HKCR { ForceRemove a = s 'new' { d } }"));
  const Contents expected = {{kClasses + "a", {{"", "\"new\""}}},
                             {kClasses + "a\\d", {}},
                             {kClasses + "ab", {{"n", "\"kept\""}}}};
  EXPECT_EQ(expected, m_sandbox.Read());
}

TEST_F(RegistrarTest, DeletesOnRegisteringAlone) {
  const std::string script = "HKCR { Delete a NoRemove b { Delete c } }";
  Set("a\\x", "n", "old");
  Set("b\\c\\x", "n", "old");
  Set("b\\d", "n", "kept");
  ExpectHr(S_OK, Register(script));
  const Contents expected = {{kClasses + "b", {}}, {kClasses + "b\\d", {{"n", "\"kept\""}}}};
  EXPECT_EQ(expected, m_sandbox.Read());
  Set("a", "", "again");
  ExpectHr(S_OK, Unregister(script));
  EXPECT_TRUE(m_sandbox.Read().contains(kClasses + "a"));
}

TEST_F(RegistrarTest, UnregisteringTakesOutWhatWasWritten) {
  const std::string script =
      "HKCR { a = s 'x' { b { c } } NoRemove d = s 'x' { val n = s 'x' ForceRemove e { f } } }";
  Set("a\\b", "foreign", "a value below does not keep a key");
  Set("d", "other", "kept");
  ExpectHr(S_OK, Register(script));
  ExpectHr(S_OK, Unregister(script));
  // A key that stays keeps its default value, and loses the values that the script names.
  const Contents expected = {{kClasses + "d", {{"", "\"x\""}, {"other", "\"kept\""}}}};
  EXPECT_EQ(expected, m_sandbox.Read());
}

TEST_F(RegistrarTest, UnregisteringWhatIsMissing) {
  const std::string script = "HKCR { a = s 'x' { b } NoRemove d { val n = s 'x' ForceRemove e } }";
  ExpectHr(S_OK, Unregister(script));
  EXPECT_EQ(Contents(), m_sandbox.Read());
  ExpectHr(S_OK, Register(script));
  ExpectHr(S_OK, Unregister(script));
  ExpectHr(S_OK, Unregister(script));
  EXPECT_EQ((Contents{{kClasses + "d", {}}}), m_sandbox.Read());
}

TEST_F(RegistrarTest, ForeignKeysStayWithTheKeysAbove) {
  const std::string script = "HKCR { a = s 'x' { val n = s 'x' b = s 'x' { c } d } e }";
  ExpectHr(S_OK, Register(script));
  Set("a\\b\\foreign", "", "kept");
  Set("a\\b", "other", "kept");
  ExpectHr(S_FALSE, Unregister(script));
  const Contents expected = {{kClasses + "a", {}},
                             {kClasses + "a\\b", {{"other", "\"kept\""}}},
                             {kClasses + "a\\b\\foreign", {{"", "\"kept\""}}}};
  EXPECT_EQ(expected, m_sandbox.Read());
  ExpectHr(S_FALSE, Unregister(script));
  EXPECT_EQ(expected, m_sandbox.Read());
  ExpectHr(S_OK, registry::DeleteTree(Root::ClassesRoot, "a\\b\\foreign"));
  ExpectHr(S_OK, Unregister(script));
  EXPECT_EQ(Contents(), m_sandbox.Read());
}

TEST_F(RegistrarTest, ForeignKeysBelowAForcedKeyGoWithIt) {
  const std::string script = "HKCR { NoRemove a { ForceRemove b } }";
  ExpectHr(S_OK, Register(script));
  Set("a\\b\\foreign", "", "x");
  ExpectHr(S_OK, Unregister(script));
  EXPECT_EQ((Contents{{kClasses + "a", {}}}), m_sandbox.Read());
}

TEST_F(RegistrarTest, OneUsersClassesStandBelowTheUser) {
  const std::string script = "HKCR { a = s 'x' } HKLM { l } HKCU { u }";
  const std::string user = "HKEY_CURRENT_USER\\";
  ExpectHr(S_OK, Register(script, RegistrationScope::User));
  Contents expected = {{user + "Software", {}},
                       {user + "Software\\Classes", {}},
                       {user + "Software\\Classes\\a", {{"", "\"x\""}}},
                       {user + "u", {}},
                       {"HKEY_LOCAL_MACHINE\\l", {}}};
  EXPECT_EQ(expected, m_sandbox.Read());
  ExpectHr(S_OK, Unregister(script, RegistrationScope::User));
  expected.erase(user + "Software\\Classes\\a");
  expected.erase(user + "u");
  expected.erase("HKEY_LOCAL_MACHINE\\l");
  EXPECT_EQ(expected, m_sandbox.Read());
}

TEST_F(RegistrarTest, AnErrorWritesNothing) {
  RegistryScript script;
  ExpectHr(E_INVALIDARG, script.Parse("HKCR { a = s 'x' { b } } HKCR { c = s 'unterminated }", {}));
  ExpectHr(S_OK, Registrar(RegistrationScope::Machine).Register(script));
  EXPECT_EQ(Contents(), m_sandbox.Read());
}
