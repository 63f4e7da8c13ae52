#pragma once

#include <memory>
#include <string>

#include "core/interfaces.h"
#include "kit/text/utf.h"
#include "platform/com_ptr.h"

namespace zortunedex {
class error;
}

namespace zortunedex::detail {
struct Location;
class Opened;
}  // namespace zortunedex::detail

namespace zortunedex::kit {

/// Where channels are: what CTunedex is opened with.
struct Location {
  std::string directory;  ///< UTF-8
  DWORD country = 0;
  InputSignalType signal = InputSignalUnknown;
};

/// Wide text of a UTF-8 argument. InvalidArgument when it is not well-formed.
WideText WideArgument(const std::string& utf8);

/// The same for the library's header.
detail::Location InLibrary(const Location& location);

/// Raises the Failure for what the library's header could not do at a location: with this message,
/// or that of a directory that cannot be opened. Lack of memory is std::bad_alloc.
[[noreturn]] void Raise(const error& raised, const Location& location, const std::string& message);

/// One opened CTunedex object, closed at the end.
class Database {
 public:
  /// Raises a Failure when the directory cannot be opened.
  explicit Database(const Location& location);
  ~Database();

  IZorTunedex* operator->() const;
  /// The list of the signal type it was opened with. Failure for a type without a list.
  ComPtr<IChannelInfoMgr> List() const { return List(m_signal); }
  ComPtr<IChannelInfoMgr> List(InputSignalType signal) const;

 private:
  std::unique_ptr<const detail::Opened> m_opened;
  InputSignalType m_signal;
};

}  // namespace zortunedex::kit
