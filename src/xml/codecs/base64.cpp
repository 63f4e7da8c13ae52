#include "xml/codecs/base64.h"

#include <array>

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::array<BYTE, 256> MakeReverse() {
  std::array<BYTE, 256> reverse{};
  for (BYTE i = 0; i < 64; ++i) reverse[static_cast<BYTE>(kAlphabet[i])] = i;
  return reverse;
}
constexpr std::array<BYTE, 256> kReverse = MakeReverse();

// The four characters of a group from 24 bits; `bytes` of them are real.
void EncodeGroup(DWORD bits, int bytes, char* target) {
  for (int i = 0; i < 4; ++i) {
    target[i] = i <= bytes ? kAlphabet[bits >> (18 - 6 * i) & 0x3F] : '=';
  }
}

}  // namespace

LONG Base64Encode(const BYTE* source, LONG length, char* target) {
  if (source == nullptr || target == nullptr || length < 1) return 0;
  LONG written = 0;
  for (LONG i = 0; i < length; i += 3) {
    const int bytes = length - i < 3 ? static_cast<int>(length - i) : 3;
    DWORD bits = 0;
    for (int k = 0; k < bytes; ++k) bits |= static_cast<DWORD>(source[i + k]) << (16 - 8 * k);
    EncodeGroup(bits, bytes, target + written);
    written += 4;
  }
  target[written] = '\0';
  return written;
}

LONG Base64Decode(const char* source, LONG length, BYTE* target) {
  if (source == nullptr || target == nullptr || length < 1) return 0;
  LONG written = 0;
  LONG i = 0;
  while (i < length) {
    DWORD bits = 0;
    int sextets = 0;  // in front of the first "="
    int taken = 0;
    while (i < length && taken < 4) {
      const char c = source[i++];
      if (c == '\r' || c == '\n') continue;
      if (c != '=' && sextets == taken) {
        bits |= static_cast<DWORD>(kReverse[static_cast<BYTE>(c)]) << (18 - 6 * sextets++);
      }
      ++taken;
    }
    for (int k = 0; k + 1 < sextets; ++k) {
      target[written++] = static_cast<BYTE>(bits >> (16 - 8 * k));
    }
  }
  target[written] = 0;
  return written;
}
