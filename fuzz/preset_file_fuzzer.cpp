// PreSetChannelInfo.xml through the public interface: open any bytes as one-segment, walk, select,
// store, delete, and compare with what the file then holds.
#include "support/fuzz.h"
#include "support/presets.h"

void Fuzz(const BYTE* data, std::size_t size) {
  const std::string bytes(data, data + size);
  const Scratch& scratch = Scratch::Emptied();
  scratch.Write("PreSetChannelInfo.xml", bytes);
  const ComPtr<IZorTunedex> database = OpenDatabase(scratch, kOneSegment);
  const std::string presets = DescribePresets(database);
  SelectSubAreas(database);
  Require(DescribePresets(database) == presets);
  Require(scratch.Read("PreSetChannelInfo.xml") == bytes);

  // What is never written stays as it is, also when it is no XML.
  const bool isStored = StoreCustomerLists(database, ChannelsInFile(scratch));
  if (!isStored) Require(scratch.Read("PreSetChannelInfo.xml") == bytes);
  const std::string stored = DescribePresets(database);
  Require(DescribePresets(OpenDatabase(scratch, kOneSegment)) == stored);

  const bool isDeleted = DeleteCustomerList(scratch, database);
  Require(DescribePresets(OpenDatabase(scratch, kOneSegment)) ==
          (isDeleted ? DescribePresets(database) : stored));
  scratch.RequireNoStrayFile();
}
