#pragma once

#include <string>

#include "kit/failure.h"
#include "kit/history/snapshots/file_set.h"

namespace zortunedex::kit::history {

/// A replacement failed when files had already been replaced and could not be put back.
class HalfDone : public Failure {
  using Failure::Failure;
};

/// Makes the files of a directory those of `after`, one by one. Directly before each replacement
/// the file is compared with that of `before`: a difference is another program's, and stays.
/// Failure: the files are those of before again; HalfDone: some are not.
void ReplaceFiles(const std::string& directory, const FileSet& before, const FileSet& after);

}  // namespace zortunedex::kit::history
