#include "tool/commands/running/exchange_files.h"

#include <iostream>

#include "kit/failure.h"
#include "kit/files/data_files.h"
#include "kit/files/folder.h"
#include "kit/files/whole_file.h"
#include "platform/host.h"

namespace fs = std::filesystem;

using interchange::Input;
using interchange::Output;
using interchange::OutputFile;

Input ReadInput(const std::string& path) {
  Input input;
  std::error_code error;
  if (fs::is_directory(whole_file::PathOf(path), error)) {
    input.isFolder = true;
    input.names = NamesIn(path);
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

void RequireFile(const Input& input, const interchange::Format& format, const std::string& path) {
  if (input.isFolder && !format.isFolder) throw Failure{E_INVALIDARG, path + " is a folder"};
}

void WriteOutputFiles(const Output& output, const std::string& path, bool isFolder) {
  if (path.empty()) {
    for (const OutputFile& file : output.files) std::cout << file.bytes;
    return;
  }
  std::string cause;
  if (isFolder && !host::MakeFolder(path, cause)) {
    throw Failure{E_FAIL, path + " cannot be made: " + cause};
  }
  for (const OutputFile& file : output.files) {
    whole_file::Replace(isFolder ? data_files::PathOf(path, file.name) : path, file.bytes);
  }
}
