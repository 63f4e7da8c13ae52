#include "kit/interchange/list/exchange_files.h"

#include <algorithm>

#include "kit/failure.h"
#include "kit/files/data_files.h"
#include "kit/files/folder.h"
#include "kit/files/whole_file.h"
#include "platform/host.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace interchange {

Input ReadInput(const std::string& path) {
  Input input;
  std::error_code error;
  if (fs::is_directory(whole_file::PathOf(path), error)) {
    input.isFolder = true;
    input.names = NamesIn(path);
    std::ranges::sort(input.names);
    input.read = [path](const std::string& name) {
      return whole_file::Read(whole_file::PathOf(data_files::PathOf(path, name)));
    };
    return input;
  }
  std::optional<std::string> bytes = whole_file::Read(whole_file::PathOf(path));
  if (!bytes) throw Failure{E_FAIL, path + " is not there or cannot be read"};
  input.bytes = *std::move(bytes);
  return input;
}

void RequireFile(const Input& input, const Format& format, const std::string& path) {
  if (input.isFolder && !format.isFolder) throw Failure{E_INVALIDARG, path + " is a folder"};
}

namespace {

/// A file that was replaced, and what it held; nothing where there was none.
struct Replaced {
  std::string path;
  std::optional<std::string> bytes;
};

void PutBack(const Replaced& file) {
  if (file.bytes) return whole_file::Replace(file.path, *file.bytes);
  std::error_code error;
  if (!fs::remove(whole_file::PathOf(file.path), error) && error) {
    throw Failure{E_FAIL, error.message()};
  }
}

void PutBackAll(const std::vector<Replaced>& files, const TakeNote& note) {
  for (const Replaced& file : files) {
    try {
      PutBack(file);
    } catch (const Failure& failure) {
      Tell(note,
           file.path + " is the new one, the old one could not be put back: " + failure.what());
    }
  }
}

}  // namespace

void WriteFiles(const Output& output, const std::string& path, bool isFolder,
                const TakeNote& note) {
  std::string cause;
  if (isFolder && !host::MakeFolder(path, cause)) {
    throw Failure{E_FAIL, path + " cannot be made: " + cause};
  }
  std::vector<Replaced> replaced;
  try {
    for (const OutputFile& file : output.files) {
      const std::string target = isFolder ? data_files::PathOf(path, file.name) : path;
      Replaced old{target, whole_file::Read(whole_file::PathOf(target))};
      whole_file::Replace(target, file.bytes);
      replaced.push_back(std::move(old));
    }
  } catch (const Failure&) {
    PutBackAll(replaced, note);
    throw;
  }
}

}  // namespace interchange

}  // namespace zortunedex::kit
