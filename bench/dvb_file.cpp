#include "bench/dvb_file.h"

#include <libdvbv5/dvb-file.h>
#include <libdvbv5/dvb-v5-std.h>

#include <cstdlib>
#include <cstring>

#include "bench/channel_data.h"
#include "bench/check.h"

namespace bench {
namespace {

// What a file owns is freed by libdvbv5 with free.
template <typename T>
T* Allocate(std::size_t count) {
  void* memory = std::calloc(count, sizeof(T));
  Check(memory != nullptr, "no memory");
  return static_cast<T*>(memory);
}

char* Copy(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  return static_cast<char*>(std::memcpy(Allocate<char>(size), text, size));
}

void SetStreams(dvb_entry& entry, const ChannelData& channel) {
  entry.video_pid_len = 1;
  entry.video_pid = Allocate<uint16_t>(1);
  entry.video_pid[0] = static_cast<uint16_t>(channel.video.pid);
  entry.audio_pid_len = 2;
  entry.audio_pid = Allocate<uint16_t>(2);
  entry.audio_pid[0] = static_cast<uint16_t>(channel.audio[0].pid);
  entry.audio_pid[1] = static_cast<uint16_t>(channel.audio[1].pid);
  entry.other_el_pid_len = 2;
  entry.other_el_pid = Allocate<dvb_elementary_pid>(2);
  entry.other_el_pid[0] = {0x56, static_cast<uint16_t>(channel.teletext.pid)};
  entry.other_el_pid[1] = {0x59, static_cast<uint16_t>(channel.subtitle.pid)};
}

dvb_entry* MakeEntry(const ChannelData& channel) {
  dvb_entry* entry = Allocate<dvb_entry>(1);
  entry->channel = Copy(channel.name.c_str());
  entry->vchannel = Copy(std::to_string(channel.index).c_str());
  entry->location = Copy(channel.network.c_str());
  entry->lnb = Copy("UNIVERSAL");
  entry->service_id = static_cast<uint16_t>(channel.serviceId);
  entry->network_id = 1;
  entry->transport_id = static_cast<uint16_t>(channel.transportStream);
  entry->sat_number = -1;
  SetStreams(*entry, channel);
  dvb_store_entry_prop(entry, DTV_DELIVERY_SYSTEM, SYS_DVBS);
  dvb_store_entry_prop(entry, DTV_FREQUENCY, channel.frequency);
  dvb_store_entry_prop(entry, DTV_POLARIZATION, channel.vertical ? POLARIZATION_V : POLARIZATION_H);
  dvb_store_entry_prop(entry, DTV_SYMBOL_RATE, channel.symbolRate * 1000);
  dvb_store_entry_prop(entry, DTV_INNER_FEC, FEC_5_6);
  dvb_store_entry_prop(entry, DTV_MODULATION, QPSK);
  dvb_store_entry_prop(entry, DTV_INVERSION, INVERSION_AUTO);
  return entry;
}

}  // namespace

void DvbFileEnd::operator()(dvb_file* file) const { dvb_file_free(file); }

DvbFile MakeDvbFile(UINT count) {
  DvbFile file(Allocate<dvb_file>(1));
  dvb_entry** next = &file->first_entry;
  for (UINT index = 1; index <= count; ++index) {
    *next = MakeEntry(MakeChannelData(index));
    next = &(*next)->next;
  }
  file->n_entries = static_cast<int>(count);
  return file;
}

DvbFile ReadDvbFile(const std::filesystem::path& path) {
  DvbFile file(dvb_read_file(path.c_str()));
  Check(file != nullptr, "libdvbv5 could not read its file");
  return file;
}

void WriteDvbFile(dvb_file& file, const std::filesystem::path& path) {
  Check(dvb_write_file(path.c_str(), &file) == 0, "libdvbv5 could not write its file");
}

UINT CountDvbChannels(const dvb_file& file) {
  UINT count = 0;
  for (const dvb_entry* entry = file.first_entry; entry; entry = entry->next) ++count;
  return count;
}

}  // namespace bench
