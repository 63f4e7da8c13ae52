#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kit/check/findings/codes.h"
#include "kit/xml/tree/document.h"

namespace zortunedex::kit::check {

/// One thing that a check found.
struct Finding {
  const Code* code = nullptr;
  std::string file;                    ///< name without a folder
  std::optional<markup::Place> place;  ///< none for a file as a whole
  std::string path;                    ///< "Country[49]/ChannelSet[64]/Channel[index=5]"
  std::optional<std::string> attribute;
  std::optional<std::string> value;  ///< UTF-8, cut where it is long
  std::string text;                  ///< a sentence about this one
  Repair repair = Repair::No;
  Option option = Option::None;

  /// What mends it in the bytes of a file. Of findings that are mended together the first one has
  /// the edits of all.
  std::vector<markup::Edit> edits;
  /// The file that the edits change; empty: the one that it is found in.
  std::string target;
  /// What becomes of the file itself.
  enum class Fate { Stays, Removed, Renamed } fate = Fate::Stays;
  std::string newName;
  /// The element that it is about, among the document's.
  markup::Index element = markup::kNone;
};

}  // namespace zortunedex::kit::check
