// ChanInfo.xml through the public interface: open and load any bytes, walk, change, save, load and
// compare. A save of what came from a save changes nothing any more.
#include "support/database.h"
#include "support/fuzz.h"

void Fuzz(const BYTE* data, std::size_t size) {
  const std::string bytes(data, data + size);
  const Scratch& scratch = Scratch::Emptied();
  scratch.Write("ChanInfo.xml", bytes);
  const OpenedWith with = FirstSet(bytes);
  const ComPtr<IZorTunedex> database = OpenDatabase(scratch, with);
  const ComPtr<IChannelInfoMgr> list = ListOf(database, with.signalType);
  WalkChannels(list);
  ChangeChannels(list);
  Require(database->SaveChannelToFile() == S_OK);
  scratch.RequireCopyIs("ChanInfo.xml", bytes);

  const ComPtr<IZorTunedex> saved = OpenDatabase(scratch, with);
  const ComPtr<IChannelInfoMgr> savedList = ListOf(saved, with.signalType);
  Require(DescribeChannels(savedList) == DescribeChannels(list));
  savedList->SetDirty(1);
  Require(saved->SaveChannelToFile() == S_OK);
  const ComPtr<IZorTunedex> again = OpenDatabase(scratch, with);
  Require(DescribeStations(ListOf(again, with.signalType)) == DescribeStations(savedList));
  // Values stand raw in this form, so that what comes back is not always the same.
  saved->SetStorageType(StoragePreFmtXML);
  saved->SaveChannelToFile();
  WalkChannels(ListOf(OpenDatabase(scratch, with), with.signalType));
  scratch.RequireNoStrayFile();
}
