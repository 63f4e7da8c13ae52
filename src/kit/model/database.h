#pragma once

#include <string>

#include "core/interfaces.h"
#include "kit/text/utf.h"
#include "platform/com_ptr.h"

namespace zortunedex::kit {

/// Where channels are: what CTunedex is opened with.
struct Location {
  std::string directory;  ///< UTF-8
  DWORD country = 0;
  InputSignalType signal = InputSignalUnknown;
};

/// Wide text of a UTF-8 argument. InvalidArgument when it is not well-formed.
WideText WideArgument(const std::string& utf8);

/// One opened CTunedex object, closed at the end.
class Database {
 public:
  /// Raises a Failure when the directory cannot be opened.
  explicit Database(const Location& location);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  IZorTunedex* operator->() const { return m_object.Get(); }
  /// The list of the signal type it was opened with. Failure for a type without a list.
  ComPtr<IChannelInfoMgr> List() const { return List(m_signal); }
  ComPtr<IChannelInfoMgr> List(InputSignalType signal) const;

 private:
  ComPtr<IZorTunedex> m_object;
  InputSignalType m_signal;
};

}  // namespace zortunedex::kit
