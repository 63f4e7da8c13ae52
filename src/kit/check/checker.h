// The files of a directory held against all rules.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "kit/check/findings/finding.h"
#include "kit/check/prediction/library_lists.h"
#include "kit/check/subject/code_page_text.h"
#include "kit/check/subject/files.h"
#include "kit/files/scratch_directory.h"

namespace zortunedex::kit::check {

/// What a check is told.
struct Settings {
  /// Whether there is a country with a code; without it that is not looked at. A check of a
  /// directory may ask it on another thread.
  std::function<bool(std::uint32_t code)> knowsCountry = {};
  /// The only file to look at; empty for all.
  std::string file = {};
  /// Findings of a code that are told of a file.
  std::size_t mostOfACode = SIZE_MAX;
};

using Documents = std::map<std::string, markup::Document, std::less<>>;

/// What a check answers.
struct Checked {
  Documents documents;
  std::vector<Finding> findings;  ///< by file and place
  bool hasSatelliteChannels = false;
};

/// Looks at files in memory, as often as it is asked to.
class Checker {
 public:
  /// Opens a database of its own in a temporary directory. Failure where that does not work.
  explicit Checker(Settings settings);

  /// Everything but the names of the files and what the library makes of them.
  Checked Check(Files files);
  /// ZT900: what the library reads otherwise than predicted. `lists` are those of the channel file
  /// where it has them already; else null.
  std::vector<Finding> Compare(const Documents& documents, LibraryLists* lists = nullptr);

  /// A file as the check reads it: bytes that are no UTF-8 are taken for the code page's.
  markup::Document Read(std::string bytes);
  /// The database that files are held against, and the texts of its code page.
  const Database& Library() const { return m_database; }
  CodePageText& Text() { return m_text; }

 private:
  void CheckFile(const std::string& name, std::string bytes, Checked& checked);
  void CheckChannels(const std::string& name, const markup::Document& document, Checked& checked);
  void CheckPutAside(const std::string& name, std::string bytes, Checked& checked);
  void CheckMissing(const Files& files, Checked& checked);
  bool IsAsked(std::string_view file) const;

  Settings m_settings;
  ScratchDirectory m_scratch;
  Database m_database;
  CodePageText m_text;
};

/// Findings of a code that a check of a directory tells of a file: bytes that are no such file at
/// all would else make many times their number.
inline constexpr std::size_t kMostOfACode = 10'000;

/// Everything about a directory. The files are looked at on a thread of its own, beside the
/// library's reading. Failure when the directory cannot be read.
std::vector<Finding> CheckDirectory(const std::string& directory, const Settings& settings);

/// By file and place.
void Sort(std::vector<Finding>& findings);

}  // namespace zortunedex::kit::check
