// Every code has a folder in tests/data/check: what is found in `input`, how it is repaired, and
// in `settings` with which options and code page.
#include <algorithm>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "kit/check/directory_repair.h"
#include "kit/check/findings/finding_json.h"
#include "kit/check/rules/directory_rules.h"
#include "kit/failure.h"
#include "kit/home.h"
#include "support/code_page.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace {

using check::Finding;

const fs::path kFixtures = ZORTUNEDEX_TEST_DATA "/check";

std::string ReadAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

bool IsOption(const std::string& name, check::Option option) {
  const char* text = check::NameOf(option);
  return text != nullptr && name == text;
}

bool IsCountry(std::uint32_t code) { return code == 1 || code == 49 || code == 81 || code == 82; }

/// A fixture in a directory of its own.
class Fixture {
 public:
  explicit Fixture(const fs::path& folder) : m_folder(folder) {
    for (const auto& entry : fs::directory_iterator(folder / "input")) {
      fs::copy_file(entry.path(), m_home.Files().File(entry.path().filename().string()));
    }
    m_settings.check.knowsCountry = IsCountry;
    std::istringstream lines(ReadAll(folder / "settings"));
    for (std::string key, value; lines >> key >> value;) Take(key, value);
  }
  ~Fixture() {
    if (m_codePage != 0) ChooseCodePage(65001);
  }
  Fixture(const Fixture&) = delete;
  Fixture& operator=(const Fixture&) = delete;

  /// False where this process cannot have the code page.
  bool IsPossible() const { return m_isPossible; }
  std::string Name() const { return m_folder.filename().string(); }
  std::string Directory() const { return m_home.Path(); }
  const check::RepairSettings& Settings() const { return m_settings; }
  bool IsRepaired() const { return fs::exists(m_folder / "repaired"); }

  nlohmann::ordered_json Expected() const {
    return nlohmann::ordered_json::parse(ReadAll(m_folder / "findings.json"));
  }

  /// What a file should be; nothing where it should be gone.
  std::optional<std::string> Repaired(const std::string& name) const {
    const fs::path path = m_folder / "repaired" / name;
    return fs::exists(path) ? std::optional(ReadAll(path)) : std::nullopt;
  }

 private:
  void Take(const std::string& key, const std::string& value) {
    if (key == "codepage") {
      m_codePage = static_cast<UINT>(std::stoul(value));
      m_isPossible = ChooseCodePage(m_codePage);
    }
    for (int i = 0; key == "option" && i <= static_cast<int>(check::Option::CodePage); ++i) {
      const auto option = static_cast<check::Option>(i);
      if (IsOption(value, option)) m_settings.options.insert(option);
    }
  }

  fs::path m_folder;
  Home m_home{Home::Start::Empty};
  check::RepairSettings m_settings;
  UINT m_codePage = 0;
  bool m_isPossible = true;
};

std::vector<fs::path> Folders() {
  std::vector<fs::path> folders;
  for (const auto& entry : fs::directory_iterator(kFixtures)) {
    if (entry.is_directory()) folders.push_back(entry.path());
  }
  std::ranges::sort(folders);
  return folders;
}

TEST(CheckFixtures, ThereIsOneForEveryCode) {
  for (const check::Code& code : check::Codes()) {
    // No file makes it: CheckComparison has its test.
    if (code.name == "ZT900") continue;
    const fs::path folder = kFixtures / std::string(code.name);
    EXPECT_TRUE(fs::exists(folder / "findings.json")) << code.name;
    if (code.repair != check::Repair::No) {
      EXPECT_TRUE(fs::exists(folder / "repaired")) << code.name;
    }
  }
}

TEST(CheckFixtures, AreFoundAsExpected) {
  for (const fs::path& folder : Folders()) {
    const Fixture fixture(folder);
    if (!fixture.IsPossible()) continue;
    const std::vector<Finding> findings =
        check::CheckDirectory(fixture.Directory(), fixture.Settings().check);
    EXPECT_EQ(fixture.Expected().dump(2), check::ToJson(findings).dump(2)) << fixture.Name();
    EXPECT_TRUE(std::ranges::any_of(findings, [&](const Finding& finding) {
      return finding.code->name == fixture.Name();
    })) << fixture.Name();
  }
}

TEST(CheckFixtures, AreRepairedAsExpected) {
  for (const fs::path& folder : Folders()) {
    const Fixture fixture(folder);
    if (!fixture.IsPossible() || !fixture.IsRepaired()) continue;
    // Names are the command's to change.
    if (fixture.Name() == "ZT004" || fixture.Name() == "ZT009") continue;
    const check::Files files = check::ReadFiles(fixture.Directory());
    const check::Repaired once = check::Repair(files, fixture.Settings());
    for (const auto& [name, bytes] : once.after) {
      EXPECT_TRUE(fixture.Repaired(name) == bytes) << fixture.Name() << " " << name << ":\n"
                                                   << bytes.value_or("(none)");
    }
    EXPECT_FALSE(once.mended.empty()) << fixture.Name();
    for (const Finding& left : once.left) {
      EXPECT_FALSE(check::IsAsked(left, fixture.Settings()))
          << fixture.Name() << ": " << left.code->name;
    }
    const check::Repaired twice = check::Repair(once.after, fixture.Settings());
    EXPECT_TRUE(twice.after == once.after) << fixture.Name();
    EXPECT_TRUE(twice.mended.empty()) << fixture.Name();
  }
}

/// What a directory holds beside its history.
std::map<std::string, std::string> Contents(const std::string& directory) {
  std::map<std::string, std::string> contents;
  for (const auto& entry : fs::directory_iterator(directory)) {
    if (entry.is_regular_file()) {
      contents[entry.path().filename().string()] = ReadAll(entry.path());
    }
  }
  return contents;
}

// The files themselves: what the fixture says is there and nothing else, a check finds what was
// said to be left, and a second repair has nothing to do.
TEST(CheckFixtures, DirectoriesAreRepairedAsExpected) {
  for (const fs::path& folder : Folders()) {
    const Fixture fixture(folder);
    if (!fixture.IsPossible() || !fixture.IsRepaired()) continue;
    SCOPED_TRACE(fixture.Name());
    const history::ChangeSettings change{fixture.Directory(), "repair"};
    const check::Repaired once = check::RepairDirectory(change, fixture.Settings());
    EXPECT_FALSE(once.mended.empty());
    EXPECT_EQ(Contents((folder / "repaired").string()), Contents(fixture.Directory()));
    const std::vector<Finding> left =
        check::CheckDirectory(fixture.Directory(), fixture.Settings().check);
    EXPECT_EQ(check::ToJson(once.left).dump(1), check::ToJson(left).dump(1));
    for (const Finding& finding : left) {
      EXPECT_FALSE(check::IsAsked(finding, fixture.Settings())) << finding.code->name;
    }
    const check::Repaired twice = check::RepairDirectory(change, fixture.Settings());
    EXPECT_TRUE(twice.mended.empty());
    EXPECT_EQ(Contents((folder / "repaired").string()), Contents(fixture.Directory()));
  }
}

TEST(CheckFindings, AreToldUpToANumberOfEachCode) {
  const Home home(Home::Start::Empty);
  std::string bytes = "<CHANNELTABLE>";
  for (std::size_t i = 0; i < check::kMostOfACode + 5; ++i) bytes += "<x/>";
  home.Files().Write("ChanInfo.xml", bytes + "&</CHANNELTABLE>");
  std::map<std::string_view, std::size_t> counts;
  for (const Finding& finding : check::CheckDirectory(home.Path(), {})) {
    ++counts[finding.code->name];
  }
  EXPECT_EQ(check::kMostOfACode, counts["ZT031"]);
  EXPECT_EQ(1U, counts["ZT020"]);
  EXPECT_EQ(1U, counts["ZT001"]);
}

// Without the option a repair leaves them.
TEST(CheckFixtures, OptionsAreAskedFor) {
  for (const fs::path& folder : Folders()) {
    const Fixture fixture(folder);
    const check::Code* code = check::FindCode(fixture.Name());
    ASSERT_NE(nullptr, code) << fixture.Name();
    if (code->repair != check::Repair::Option || code->name == "ZT025") continue;
    const check::Files files = check::ReadFiles(fixture.Directory());
    check::RepairSettings settings = fixture.Settings();
    settings.options.clear();
    const check::Repaired result = check::Repair(files, settings);
    EXPECT_TRUE(std::ranges::any_of(result.left, [&](const Finding& finding) {
      return finding.code == code;
    })) << fixture.Name();
  }
}

TEST(CheckFixtures, NothingIsWrittenWhileMarkupSplitsInSeveralWays) {
  const Fixture fixture(kFixtures / "ZT025");
  const check::Files files = check::ReadFiles(fixture.Directory());
  EXPECT_THROW(check::Repair(files, {}), Failure);
}

// A code alone: what else is there stays to the letter.
TEST(CheckFixtures, CodesCanBeChosen) {
  const Fixture fixture(kFixtures / "ZT100");
  const check::Files files = check::ReadFiles(fixture.Directory());
  check::RepairSettings settings;
  settings.codes = {"ZT080"};
  const check::Repaired result = check::Repair(files, settings);
  EXPECT_TRUE(result.mended.empty());
  EXPECT_TRUE(result.after == files);
  settings.codes = {"ZT100"};
  EXPECT_FALSE(check::Repair(files, settings).mended.empty());
}

}  // namespace

}  // namespace zortunedex::kit
