#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "kit/model/database.h"

namespace zortunedex::kit {

/// Converts the narrow texts of station blocks. The library alone knows the code page: a record of
/// its own serves as the scratch pad on which texts are set as channel names and read back.
class NarrowText {
 public:
  explicit NarrowText(const Database& database);

  /// Wide text of up to kLimit bytes; more are left out.
  WideText ToWide(std::string_view narrow) const;
  /// Narrow bytes; nothing when the code page lacks a character. Texts of more than kLimit bytes
  /// come cut.
  std::optional<std::string> FromWide(WideView wide) const;

  /// True where ASCII is the same in the code page, as it is in nearly all.
  bool KeepsAscii() const { return m_keepsAscii; }

  /// The bytes with the code page's replacement for every character that it lacks, up to kLimit of
  /// them.
  std::string Replacing(WideView wide) const;

  /// The bytes of a text that keeps to a limit below kLimit. Raises a Failure that begins with
  /// `what` for one that does not, or that holds what the code page lacks.
  std::string Require(WideView wide, std::size_t limit, const std::string& what) const;

  static constexpr std::size_t kLimit = 1024;
  /// Text attributes are read through buffers of 260 bytes, their terminator included.
  static constexpr std::size_t kAttributeLimit = 259;

 private:
  void Put(std::string_view narrow) const;
  WideText AskWide(std::string_view narrow) const;
  std::optional<std::string> AskNarrow(WideView wide) const;

  ComPtr<IChannelInfo> m_record;
  /// Such texts need not be asked for.
  bool m_keepsAscii = false;
};

/// The bytes in front of the first zero.
std::string_view UpToZero(const BYTE* bytes, std::size_t size);

}  // namespace zortunedex::kit
