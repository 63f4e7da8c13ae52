#include "kit/merge/fingerprint.h"

#include <initializer_list>
#include <tuple>

namespace zortunedex::kit::merge {
namespace {

/// FNV-1a.
class Hash {
 public:
  void Add(std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) AddByte(static_cast<BYTE>(number >> shift));
  }
  void AddByte(BYTE byte) { m_value = (m_value ^ byte) * 0x100000001B3U; }
  std::uint64_t Value() const { return m_value; }

 private:
  std::uint64_t m_value = 0xCBF29CE484222325U;
};

}  // namespace

std::uint64_t HashOf(const Channel& channel) {
  Hash hash;
  for (const std::uint32_t number :
       {std::uint32_t{channel.number}, static_cast<std::uint32_t>(channel.frequency),
        static_cast<std::uint32_t>(channel.offset), static_cast<std::uint32_t>(channel.tsid)}) {
    hash.Add(number);
  }
  for (const WideText* text : {&channel.name, &channel.displayName}) {
    for (const OLECHAR unit : *text) hash.Add(unit);
    hash.Add(0);
  }
  for (const BYTE byte : channel.block) hash.AddByte(byte);
  return hash.Value();
}

bool IsContentBefore(const Channel& a, const Channel& b) {
  return std::tie(a.frequency, a.number, a.tsid, a.offset, a.name, a.block, a.displayName) <
         std::tie(b.frequency, b.number, b.tsid, b.offset, b.name, b.block, b.displayName);
}

std::uint64_t FingerprintOf(const ChannelTable& scan) {
  // A sum is the same in any order.
  std::uint64_t sum = scan.channels.size();
  for (const Channel& channel : scan.channels) sum += HashOf(channel) * 0x9E3779B97F4A7C15U;
  return sum;
}

}  // namespace zortunedex::kit::merge
