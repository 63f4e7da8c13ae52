// What holds on both targets.
#include "platform/registry.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/expect.h"
#include "support/registry_sandbox.h"

namespace {

constexpr std::string_view kKey = "Software\\Vendor\\Product";

class Registry : public testing::Test {
 protected:
  static std::string Text(std::string_view key, std::string_view name) {
    char buffer[512];
    ExpectHr(S_OK,
             registry::ReadText(registry::Root::LocalMachine, key, name, buffer, sizeof(buffer)));
    return buffer;
  }
  static void Set(std::string_view key, std::string_view name, std::string_view value) {
    ExpectHr(S_OK, registry::SetText(registry::Root::LocalMachine, key, name, value));
  }
  static bool Exists(std::string_view key) {
    return registry::KeyExists(registry::Root::LocalMachine, key);
  }
  static bool HasSubKeys(std::string_view key) {
    return registry::HasSubKeys(registry::Root::LocalMachine, key);
  }
  /// Expects that nothing is read and the buffer stays.
  static void ExpectNoText(std::string_view key, std::string_view name, std::size_t size = 64) {
    char buffer[64];
    std::fill(std::begin(buffer), std::end(buffer), '#');
    ExpectHr(E_FAIL, registry::ReadText(registry::Root::LocalMachine, key, name, buffer, size));
    EXPECT_EQ(std::string(64, '#'), std::string(buffer, sizeof(buffer)));
  }

  RegistrySandbox m_sandbox;
};

TEST_F(Registry, MissingKeysAndValuesAreNotRead) {
  ExpectNoText(kKey, "Name");
  ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, kKey));
  ExpectNoText(kKey, "Name");
  ExpectNoText(kKey, "");
  ExpectNoText("Software\\Vendor\\Produc", "Name");
}

TEST_F(Registry, TextsComeBack) {
  Set(kKey, "Name", "Federation");
  Set(kKey, "", "default");
  Set(kKey, "Empty", "");
  Set(kKey, "Path", "C:\\Program Files\\\"x\"\\");
  Set(kKey, "Quoted \"name\" \\", "y");
  Set(kKey, "Lines", "one\r\ntwo\tthree");
  Set(kKey, "@", "at");
  EXPECT_EQ("Federation", Text(kKey, "Name"));
  EXPECT_EQ("default", Text(kKey, ""));
  EXPECT_EQ("", Text(kKey, "Empty"));
  EXPECT_EQ("C:\\Program Files\\\"x\"\\", Text(kKey, "Path"));
  EXPECT_EQ("y", Text(kKey, "Quoted \"name\" \\"));
  EXPECT_EQ("one\r\ntwo\tthree", Text(kKey, "Lines"));
  EXPECT_EQ("at", Text(kKey, "@"));
}

TEST_F(Registry, SettingReplaces) {
  Set(kKey, "Name", "first and longer");
  Set(kKey, "Name", "second");
  EXPECT_EQ("second", Text(kKey, "Name"));
  ExpectHr(S_OK, registry::SetNumber(registry::Root::LocalMachine, kKey, "Name", 7));
  ExpectNoText(kKey, "Name");
  Set(kKey, "Name", "third");
  EXPECT_EQ("third", Text(kKey, "Name"));
}

TEST_F(Registry, NumbersAreNoText) {
  ExpectHr(S_OK, registry::SetNumber(registry::Root::LocalMachine, kKey, "Count", 0xFFFFFFFFU));
  EXPECT_TRUE(Exists(kKey));
  ExpectNoText(kKey, "Count");
}

TEST_F(Registry, TextNeedsRoomForItsTerminator) {
  Set(kKey, "Name", "12345");
  ExpectNoText(kKey, "Name", 0);
  ExpectNoText(kKey, "Name", 1);
  ExpectNoText(kKey, "Name", 5);
  char buffer[8] = "#######";
  ExpectHr(S_OK, registry::ReadText(registry::Root::LocalMachine, kKey, "Name", buffer, 6));
  EXPECT_EQ(std::string("12345\0#", 7), std::string(buffer, 7));
}

TEST_F(Registry, NamesCompareWithoutCase) {
  Set("Software\\MicroSoft\\List", "Name", "one");
  EXPECT_EQ("one", Text("SOFTWARE\\Microsoft\\LIST", "NAME"));
  Set("software\\microsoft\\list", "name", "two");
  EXPECT_EQ("two", Text("Software\\MicroSoft\\List", "Name"));
  EXPECT_TRUE(Exists("sOFTWARE\\mICROSOFT"));
  ExpectHr(S_OK, registry::DeleteTree(registry::Root::LocalMachine, "SOFTWARE\\MICROSOFT\\LIST"));
  EXPECT_FALSE(Exists("Software\\MicroSoft\\List"));
}

TEST_F(Registry, CreatingMakesTheParents) {
  EXPECT_FALSE(Exists("A"));
  ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, "A\\B\\C"));
  EXPECT_TRUE(Exists("A"));
  EXPECT_TRUE(Exists("A\\B"));
  EXPECT_TRUE(Exists("A\\B\\C"));
  EXPECT_FALSE(Exists("A\\B\\C\\D"));
  EXPECT_FALSE(Exists("A\\B\\CC"));
  EXPECT_FALSE(Exists("B"));
}

TEST_F(Registry, CreatingAKeyAgainKeepsItsValues) {
  Set("A", "Name", "kept");
  ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, "A"));
  EXPECT_EQ("kept", Text("A", "Name"));
}

TEST_F(Registry, SubKeysAreThoseBelow) {
  ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, "A\\B"));
  ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, "AB\\C"));
  EXPECT_TRUE(HasSubKeys("A"));
  EXPECT_FALSE(HasSubKeys("A\\B"));
  EXPECT_FALSE(HasSubKeys("none"));
  Set("A\\B", "Name", "a value is no key");
  EXPECT_FALSE(HasSubKeys("A\\B"));
}

TEST_F(Registry, DeletingTakesEverythingBelowAndNothingElse) {
  Set("A\\B", "Name", "1");
  Set("A\\B\\C\\D", "Name", "2");
  Set("A\\BB", "Name", "3");
  Set("A\\B B", "Name", "4");
  ExpectHr(S_OK, registry::DeleteTree(registry::Root::LocalMachine, "A\\B"));
  EXPECT_FALSE(Exists("A\\B"));
  EXPECT_FALSE(Exists("A\\B\\C"));
  EXPECT_FALSE(Exists("A\\B\\C\\D"));
  ExpectNoText("A\\B", "Name");
  EXPECT_EQ("3", Text("A\\BB", "Name"));
  EXPECT_EQ("4", Text("A\\B B", "Name"));
}

TEST_F(Registry, DeletingKeepsTheKeyAbove) {
  ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, "A\\B\\C"));
  ExpectHr(S_OK, registry::DeleteTree(registry::Root::LocalMachine, "A\\B\\C"));
  EXPECT_TRUE(Exists("A\\B"));
  EXPECT_FALSE(HasSubKeys("A\\B"));
  ExpectHr(S_OK, registry::DeleteTree(registry::Root::LocalMachine, "A\\B"));
  EXPECT_TRUE(Exists("A"));
}

TEST_F(Registry, DeletingWhatIsMissingIsNoError) {
  ExpectHr(S_OK, registry::DeleteTree(registry::Root::LocalMachine, "none"));
  ExpectHr(S_OK, registry::DeleteTree(registry::Root::LocalMachine, "none\\below"));
}

TEST_F(Registry, TextListsAndBytes) {
  using Texts = std::vector<std::string>;
  ExpectHr(S_OK, registry::SetTexts(registry::Root::LocalMachine, "A", "List", Texts{"b", "c"}));
  ExpectHr(S_OK, registry::SetTexts(registry::Root::LocalMachine, "A", "None", Texts{}));
  ExpectHr(S_OK, registry::SetBytes(registry::Root::LocalMachine, "A", "Bytes",
                                    std::string("\0\xFF", 2)));
  ExpectHr(S_OK, registry::SetBytes(registry::Root::LocalMachine, "A", "", ""));
  const RegistrySandbox::Values expected = {{"", "hex:"},
                                            {"Bytes", "hex:00,ff"},
                                            {"List", "hex(7):62,00,00,00,63,00,00,00,00,00"},
                                            {"None", "hex(7):00,00"}};
  EXPECT_EQ(expected, m_sandbox.Read()["HKEY_LOCAL_MACHINE\\A"]);
  ExpectNoText("A", "List");
  ExpectNoText("A", "Bytes");
  ExpectHr(E_INVALIDARG,
           registry::SetTexts(registry::Root::LocalMachine, "A", "List", Texts{"b", ""}));
  EXPECT_EQ(expected, m_sandbox.Read()["HKEY_LOCAL_MACHINE\\A"]);
}

TEST_F(Registry, DeletingAValueKeepsTheOthers) {
  Set("A", "", "1");
  Set("A", "Name", "2");
  ExpectHr(S_OK, registry::DeleteValue(registry::Root::LocalMachine, "A", "NAME"));
  ExpectNoText("A", "Name");
  EXPECT_EQ("1", Text("A", ""));
  ExpectHr(S_OK, registry::DeleteValue(registry::Root::LocalMachine, "A", ""));
  ExpectNoText("A", "");
  EXPECT_TRUE(Exists("A"));
  ExpectHr(S_OK, registry::DeleteValue(registry::Root::LocalMachine, "A", "Name"));
  ExpectHr(S_OK, registry::DeleteValue(registry::Root::LocalMachine, "none\\below", "Name"));
  EXPECT_FALSE(Exists("none"));
}

TEST_F(Registry, DeletingAKeySparesWhatHasKeysBelow) {
  Set("A\\B", "Name", "1");
  Set("A", "Name", "2");
  ExpectHr(S_FALSE, registry::DeleteKey(registry::Root::LocalMachine, "A"));
  EXPECT_EQ("1", Text("A\\B", "Name"));
  EXPECT_EQ("2", Text("A", "Name"));
  ExpectHr(S_OK, registry::DeleteKey(registry::Root::LocalMachine, "A\\B"));
  EXPECT_FALSE(Exists("A\\B"));
  ExpectHr(S_OK, registry::DeleteKey(registry::Root::LocalMachine, "A"));
  EXPECT_FALSE(Exists("A"));
  ExpectHr(S_OK, registry::DeleteKey(registry::Root::LocalMachine, "A"));
  ExpectHr(S_OK, registry::DeleteKey(registry::Root::LocalMachine, "none\\below"));
  ExpectHr(E_INVALIDARG, registry::DeleteKey(registry::Root::LocalMachine, ""));
}

TEST_F(Registry, RootsAreApart) {
  ExpectHr(S_OK, registry::SetText(registry::Root::CurrentUser, "A", "", "user"));
  ExpectHr(S_OK, registry::SetText(registry::Root::ClassesRoot, "A", "", "classes"));
  Set("A", "", "machine");
  const RegistrySandbox::Contents expected = {{"HKEY_CLASSES_ROOT\\A", {{"", "\"classes\""}}},
                                              {"HKEY_CURRENT_USER\\A", {{"", "\"user\""}}},
                                              {"HKEY_LOCAL_MACHINE\\A", {{"", "\"machine\""}}}};
  EXPECT_EQ(expected, m_sandbox.Read());
}

TEST_F(Registry, WholeRootIsNotDeleted) {
  Set("A", "Name", "kept");
  ExpectHr(E_INVALIDARG, registry::DeleteTree(registry::Root::LocalMachine, ""));
  EXPECT_EQ("kept", Text("A", "Name"));
}

/// Random calls against a plain map of keys to their values.
class RegistryModel {
 public:
  void Create(const std::string& key) {
    for (std::size_t end = 0; end != std::string::npos;) {
      end = key.find('\\', end + 1);
      m_keys[key.substr(0, end)];
    }
  }
  void Set(const std::string& key, const std::string& name, const std::string& value) {
    Create(key);
    m_keys[key][name] = value;
  }
  void Delete(const std::string& key) {
    std::erase_if(m_keys, [&](const auto& entry) {
      return entry.first == key || entry.first.starts_with(key + "\\");
    });
  }
  bool Has(const std::string& key) const { return m_keys.contains(key); }
  bool HasSubKeys(const std::string& key) const {
    return std::any_of(m_keys.begin(), m_keys.end(),
                       [&](const auto& entry) { return entry.first.starts_with(key + "\\"); });
  }
  const std::string* Find(const std::string& key, const std::string& name) const {
    const auto found = m_keys.find(key);
    if (found == m_keys.end() || !found->second.contains(name)) return nullptr;
    return &found->second.at(name);
  }

 private:
  std::map<std::string, std::map<std::string, std::string>> m_keys;
};

TEST_F(Registry, RandomCallsAgreeWithAModel) {
  const std::vector<std::string> keys = {"a",    "a\\b", "a\\b\\c", "a\\b\\c\\d", "a\\bb",    "a b",
                                         "a\\c", "e\\f", "e",       "e\\f\\g",    "a\\b\\[x]"};
  const std::vector<std::string> names = {"", "n", "name", "@", "\"=", "a;b"};
  const std::vector<std::string> values = {"", "v", "x=y", "\\\"", "[a]", ";", "\n[a\\b]\n@=\"z\""};
  std::mt19937 random(20240229);
  const auto pick = [&random](const auto& list) { return list[random() % list.size()]; };
  RegistryModel model;
  for (int step = 0; step < 250; ++step) {
    const std::string key = pick(keys);
    switch (random() % 4) {
      case 0:
        model.Create(key);
        ExpectHr(S_OK, registry::CreateKey(registry::Root::LocalMachine, key));
        break;
      case 1:
        model.Delete(key);
        ExpectHr(S_OK, registry::DeleteTree(registry::Root::LocalMachine, key));
        break;
      default: {
        const std::string name = pick(names);
        const std::string value = pick(values);
        model.Set(key, name, value);
        Set(key, name, value);
      }
    }
    const std::string asked = pick(keys);
    const std::string name = pick(names);
    ASSERT_EQ(model.Has(asked), Exists(asked)) << asked << " in step " << step;
    ASSERT_EQ(model.HasSubKeys(asked), HasSubKeys(asked)) << asked << " in step " << step;
    const std::string* value = model.Find(asked, name);
    if (value) {
      ASSERT_EQ(*value, Text(asked, name)) << "step " << step;
    } else {
      ExpectNoText(asked, name);
    }
  }
}

}  // namespace
