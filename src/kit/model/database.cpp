#include "kit/model/database.h"

#include "kit/failure.h"
#include "kit/text/signal_types.h"
#include "platform/host.h"

namespace zortunedex::kit {

WideText WideArgument(const std::string& utf8) {
  std::optional<WideText> wide = utf::ToWide(utf8);
  if (!wide) throw InvalidArgument{"an argument is not UTF-8"};
  return *std::move(wide);
}

namespace {

ComPtr<IZorTunedex> CreateTunedex() {
  ComPtr<IClassFactory> factory;
  Require(host::GetClassObject(CLSID_ZorTunedex, IID_IClassFactory,
                               reinterpret_cast<void**>(factory.Receive())),
          "the library has no such class");
  ComPtr<IZorTunedex> object;
  Require(
      factory->CreateInstance(nullptr, IID_IZorTunedex, reinterpret_cast<void**>(object.Receive())),
      "the database object could not be made");
  return object;
}

}  // namespace

Database::Database(const Location& location)
    : m_object(CreateTunedex()), m_signal(location.signal) {
  const Bstr directory(WideArgument(location.directory));
  Require(m_object->Open(directory.Get(), location.country, location.signal),
          "cannot open the directory " + location.directory);
}

Database::~Database() { m_object->Close(); }

ComPtr<IChannelInfoMgr> Database::List(InputSignalType signal) const {
  ComPtr<IChannelInfoMgr> list;
  Require(m_object->GetChannelInfoMgr(signal, list.Receive()),
          "there is no channel list for " + SignalTypeName(signal));
  return list;
}

}  // namespace zortunedex::kit
