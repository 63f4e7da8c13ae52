#include "kit/history/replacement.h"

#include <vector>

#include "kit/files/whole_file.h"
#include "platform/host.h"

namespace zortunedex::kit::history {
namespace {

using Bytes = std::optional<std::string>;

/// True when the file at the path has or is nothing like that; false with the cause.
bool Put(const std::string& path, const Bytes& bytes, std::string& cause) {
  return bytes ? host::ReplaceFile(path, *bytes, cause) : host::RemoveFile(path, cause);
}

/// True when the file holds these bytes. One that cannot be read does not.
bool Holds(const std::string& directory, const std::string& name, const Bytes& bytes) {
  if (bytes) return whole_file::Holds(whole_file::PathOf(PathOf(directory, name)), *bytes);
  try {
    return !ReadFile(directory, name);
  } catch (const Failure&) {
    return false;
  }
}

/// Puts the files of before back. False when one could not be, or is another program's by now.
bool PutBack(const std::string& directory, const std::vector<std::string>& names,
             const FileSet& before, const FileSet& after) {
  bool isBack = true;
  for (const std::string& name : names) {
    std::string ignored;
    const std::string path = PathOf(directory, name);
    if (Holds(directory, name, BytesOf(after, name))) Put(path, BytesOf(before, name), ignored);
    if (!Holds(directory, name, BytesOf(before, name))) isBack = false;
  }
  return isBack;
}

}  // namespace

void ReplaceFiles(const std::string& directory, const FileSet& before, const FileSet& after) {
  std::vector<std::string> replaced;
  for (const std::string& name : Differing(before, after)) {
    std::string problem;
    std::string cause;
    std::string state = "; the file is unchanged";
    if (!Holds(directory, name, BytesOf(before, name))) {
      problem = name + " was changed by another program meanwhile";
      state = "; its change stays, and this one was not made";
    } else if (!Put(PathOf(directory, name), BytesOf(after, name), cause) &&
               !Holds(directory, name, BytesOf(after, name))) {
      problem =
          name + (BytesOf(after, name) ? " could not be written: " : " could not be removed: ");
      problem += cause;
    }
    if (problem.empty()) {
      replaced.push_back(name);
      continue;
    }
    if (PutBack(directory, replaced, before, after)) {
      throw Failure{E_FAIL, problem + state};
    }
    throw HalfDone{E_FAIL, problem + "; a part of the change is made"};
  }
}

}  // namespace zortunedex::kit::history
