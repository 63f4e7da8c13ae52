#include "kit/model/database.h"

#include <new>

#include "api/zortunedex/opened.hpp"
#include "kit/failure.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

WideText WideArgument(const std::string& utf8) {
  std::optional<WideText> wide = utf::ToWide(utf8);
  if (!wide) throw InvalidArgument{"an argument is not UTF-8"};
  return *std::move(wide);
}

detail::Location InLibrary(const Location& location) {
  std::filesystem::path directory(WideArgument(location.directory));
  return {std::make_shared<const Component>(), directory, location.country,
          static_cast<zortunedex::signal>(location.signal), directory};
}

void Raise(const error& raised, const Location& location, const std::string& message) {
  if (raised.result() == E_OUTOFMEMORY) throw std::bad_alloc();
  const bool isOpen = raised.operation() != "open";
  throw Failure{raised.result(),
                isOpen ? message : "cannot open the directory " + location.directory};
}

Database::Database(const Location& location) try
    : m_opened(std::make_unique<const detail::Opened>(InLibrary(location))),
      m_signal(location.signal) {
} catch (const error& raised) {
  Raise(raised, location, raised.what());
}

Database::~Database() = default;

IZorTunedex* Database::operator->() const { return m_opened->operator->(); }

ComPtr<IChannelInfoMgr> Database::List(InputSignalType signal) const {
  ComPtr<IChannelInfoMgr> list;
  Require((*this)->GetChannelInfoMgr(signal, list.Receive()),
          "there is no channel list for " + SignalTypeName(signal));
  return list;
}

}  // namespace zortunedex::kit
