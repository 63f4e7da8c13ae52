#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kit/check/codes.h"
#include "kit/xml/document.h"

namespace check {

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

  /// What mends it in the file's bytes. Empty for what is mended otherwise.
  std::vector<markup::Edit> edits;
  /// The element that it is about, among the document's.
  markup::Index element = markup::kNone;
};

}  // namespace check
