// What the interfaces do not tell: which countries and channel sets ChanInfo.xml holds, and what
// else stands in it. The file is looked through tag by tag, without judging it.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/interfaces.h"

namespace zortunedex::kit::file_scan {

struct Attribute {
  std::string_view name;
  std::string value;  ///< references resolved
};

struct Tag {
  std::string_view name;
  std::vector<Attribute> attributes;
  bool closing = false;
  bool hasContent = false;  ///< more than white space stands between it and its closing tag

  /// Null when there is none.
  const std::string* Find(std::string_view attribute) const;
  /// The attribute as a number; 0 when there is none.
  std::uint32_t Number(std::string_view attribute) const;
};

/// Calls back for every tag of an XML text in an encoding that extends ASCII. Comments, CDATA and
/// declarations are skipped; the scan ends at what is no markup.
void ForEachTag(std::string_view xml, const std::function<void(const Tag&)>& take);

struct ChannelSet {
  DWORD country = 0;
  InputSignalType signal = InputSignalUnknown;
  std::size_t channels = 0;
};

struct Country {
  DWORD code = 0;
  std::string name;
};

struct Contents {
  bool exists = false;
  bool table = false;  ///< a CHANNELTABLE was seen
  std::vector<Country> countries;
  std::vector<ChannelSet> sets;

  std::size_t ChannelCount() const;
};

/// Path of a file in a directory that is given as UTF-8.
std::filesystem::path FileIn(const std::string& directory, const char* name);
std::filesystem::path ChannelFile(const std::string& directory);
/// Bytes of a file; empty when there is none. Failure for an encoding that cannot be scanned.
std::string ReadWhole(const std::filesystem::path& path);
Contents Scan(const std::string& directory);

}  // namespace zortunedex::kit::file_scan
