#include "kit/files/scratch_directory.h"

#include "kit/failure.h"
#include "kit/model/channel.h"
#include "kit/model/database.h"

namespace zortunedex::kit {

namespace {

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

ScratchDirectory::ScratchDirectory() try {
} catch (const error&) {
  throw Failure{E_FAIL, "a temporary directory cannot be made"};
}

ScratchDirectory::ScratchDirectory(DWORD country) : ScratchDirectory() {
  SaveOneChannel({Path(), country, InputSignalFMRadio});
}

std::string ScratchDirectory::Path() const {
  const std::u8string path = m_scratch.Path().u8string();
  return {path.begin(), path.end()};
}

}  // namespace zortunedex::kit
