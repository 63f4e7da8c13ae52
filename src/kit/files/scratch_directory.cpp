#include "kit/files/scratch_directory.h"

#include <chrono>

#include "kit/failure.h"
#include "kit/model/channel.h"
#include "kit/model/database.h"

namespace zortunedex::kit {

namespace fs = std::filesystem;

namespace {

fs::path MakeDirectory() {
  std::error_code error;
  const fs::path base = fs::temp_directory_path(error);
  const auto stamp = std::chrono::system_clock::now().time_since_epoch().count();
  for (int attempt = 0; !error && attempt < 100; ++attempt) {
    fs::path path = base / ("tunedex-" + std::to_string(stamp) + "-" + std::to_string(attempt));
    if (!fs::create_directory(path, error)) continue;
    // Copies of files that are nobody else's may come to stand there.
    fs::permissions(path, fs::perms::owner_all, error);
    return path;
  }
  throw Failure{E_FAIL, "a temporary directory cannot be made"};
}

void SaveOneChannel(const Location& location) {
  const Database database(location);
  const ComPtr<IChannelInfoMgr> list = database.List();
  ComPtr<IChannelInfo> record;
  Require(list->CreateChannelInfo(record.Receive()), "a record cannot be made");
  record->SetChannelIndex(1);  // answers E_NOTIMPL and stores it
  Channel channel;
  channel.block.resize(station_blocks::kFmRadio.size);
  WriteChannel(channel, InputSignalFMRadio, record.Get());
  Require(list->AddChannelInfo(record.Get()), "a record cannot be added");
  Require(database->SaveChannelToFile(), "a temporary file cannot be written");
}

}  // namespace

ScratchDirectory::ScratchDirectory(fs::path path) : m_path(std::move(path)) {}

ScratchDirectory::ScratchDirectory() : ScratchDirectory(MakeDirectory()) {}

ScratchDirectory::ScratchDirectory(DWORD country) : ScratchDirectory(MakeDirectory()) {
  SaveOneChannel({Path(), country, InputSignalFMRadio});
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  fs::remove_all(m_path, ignored);
}

std::string ScratchDirectory::Path() const {
  const std::u8string path = m_path.u8string();
  return {path.begin(), path.end()};
}

}  // namespace zortunedex::kit
