// A directory whose files are short texts, changed and taken back through its history.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "kit/history/change.h"
#include "support/temp_dir.h"

namespace zortunedex::kit {

using Texts = std::map<std::string, std::string>;

class RecordedHome {
 public:
  explicit RecordedHome(const Texts& texts = {}) {
    for (const auto& [name, text] : texts) m_directory.Write(name, text);
  }

  const TempDir& Files() const { return m_directory; }
  history::ChangeSettings Settings(const std::string& by = "test") const {
    return {m_directory.Path(), by};
  }
  history::Store Store() const { return history::Store(m_directory.Path()); }

  /// What the directory holds, without what is not there.
  Texts Now() const { return Present(history::ReadFiles(m_directory.Path())); }
  static Texts Present(const history::FileSet& files) {
    Texts texts;
    for (const auto& [name, bytes] : files) {
      if (bytes) texts[name] = *bytes;
    }
    return texts;
  }

  /// Makes the directory hold these files alone, by a command or by somebody else.
  history::Difference Change(const Texts& texts, const std::string& by = "test") const {
    return history::MakeChange(Settings(by), Writing(texts));
  }
  void ChangeOutside(const Texts& texts) const { Writing(texts)(m_directory.Path()); }

  static std::function<void(const std::string&)> Writing(const Texts& texts) {
    return [texts](const std::string& directory) {
      for (const auto& [name, bytes] : history::ReadFiles(directory)) {
        if (!texts.contains(name)) std::filesystem::remove(history::PathOf(directory, name));
      }
      for (const auto& [name, text] : texts) {
        std::ofstream(history::PathOf(directory, name), std::ios::binary) << text;
      }
    };
  }

 private:
  TempDir m_directory;
};

/// Every snapshot can be read, nothing is in progress, and nothing else stands in the folder.
inline void ExpectWholeHistory(const std::string& directory) {
  const history::Store store(directory);
  EXPECT_TRUE(store.Damages().empty()) << store.Damages().front();
  EXPECT_FALSE(store.InProgress());
  std::map<std::string, int> expected{{"lock", 1}};
  if (store.Head() != nullptr) ++expected["HEAD"];
  for (const auto& [number, snapshot] : store.Snapshots()) {
    EXPECT_NO_THROW(store.Read(snapshot)) << number;
    ++expected[history::FileNameOf(number)];
    for (const auto& [name, stored] : snapshot.files) {
      if (stored) expected[stored->in] = 1;
    }
  }
  for (const auto& entry :
       std::filesystem::directory_iterator(history::PathOf(directory, history::kFolder))) {
    const std::string name = entry.path().filename().string();
    EXPECT_TRUE(expected.contains(name) || history::IsBase(name)) << name << " is left over";
  }
}

}  // namespace zortunedex::kit
