// Base64 both ways: what was encoded decodes to itself, and nothing decodes beyond its room.
#include <algorithm>
#include <vector>

#include "support/fuzz.h"
#include "xml/codecs/base64.h"

void Fuzz(const BYTE* data, std::size_t size) {
  const LONG length = static_cast<LONG>(size);
  std::vector<char> text(Base64EncodedSize(size));
  const LONG encoded = Base64Encode(data, length, text.data());
  std::vector<BYTE> back(Base64DecodedSize(static_cast<std::size_t>(encoded)));
  Require(Base64Decode(text.data(), encoded, back.data()) == length);
  Require(std::equal(data, data + size, back.begin()));

  std::vector<BYTE> decoded(Base64DecodedSize(size));
  const LONG count = Base64Decode(reinterpret_cast<const char*>(data), length, decoded.data());
  Require(count >= 0 && static_cast<std::size_t>(count) < decoded.size());
  if (length > 0) Require(decoded[static_cast<std::size_t>(count)] == 0);
}
