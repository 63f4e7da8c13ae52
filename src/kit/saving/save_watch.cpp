#include "kit/saving/save_watch.h"

#include "kit/files/file_scan.h"
#include "kit/files/whole_file.h"
#include "platform/host.h"

namespace zortunedex::kit {

namespace {

/// What a save is tried with beside the size of the old file: a change makes a file longer.
constexpr std::size_t kMore = std::size_t{64} * 1024;

std::string PathIn(const std::string& directory, const std::string& file) {
  const std::u8string path = file_scan::FileIn(directory, file.c_str()).u8string();
  return {path.begin(), path.end()};
}

}  // namespace

SaveWatch::SaveWatch(const std::string& directory, const std::string& file)
    : m_path(PathIn(directory, file)),
      m_file(file),
      m_before(whole_file::Read(whole_file::PathOf(m_path))) {}

void SaveWatch::Raise(const Failure& failure) const {
  const std::string what = failure.what();
  if (whole_file::Read(whole_file::PathOf(m_path)) != m_before) {
    throw FailedSave{failure.Result(), what, "the file was replaced"};
  }
  const std::size_t size = m_before ? m_before->size() : 0;
  const std::string cause = host::WhyNotWritten(m_path, size + kMore);
  const std::string message = cause.empty() ? what : m_file + " could not be written: " + cause;
  throw FailedSave{failure.Result(), message, "the file is unchanged"};
}

}  // namespace zortunedex::kit
