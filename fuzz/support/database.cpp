#include "support/database.h"

#include <charconv>

#include "core/station_blocks.h"
#include "support/fuzz.h"

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);

namespace {

template <typename T>
T NumberBehind(std::string_view bytes, std::string_view key, T otherwise) {
  const std::size_t place = bytes.find(key);
  if (place == bytes.npos) return otherwise;
  std::int32_t number = 0;
  const char* digits = bytes.data() + place + key.size();
  const auto end = std::from_chars(digits, bytes.data() + bytes.size(), number);
  return end.ec == std::errc() ? static_cast<T>(number) : otherwise;
}

ComPtr<IZorTunedex> NewDatabase() {
  void* factory = nullptr;
  Require(DllGetClassObject(CLSID_ZorTunedex, IID_IClassFactory, &factory) == S_OK);
  const auto held = ComPtr<IClassFactory>::Attach(static_cast<IClassFactory*>(factory));
  void* database = nullptr;
  Require(held->CreateInstance(nullptr, IID_IZorTunedex, &database) == S_OK);
  return ComPtr<IZorTunedex>::Attach(static_cast<IZorTunedex*>(database));
}

}  // namespace

OpenedWith FirstSet(std::string_view bytes) {
  OpenedWith with;
  const auto signalType = NumberBehind(bytes, "inputSignalType=\"", with.signalType);
  // The others have no form in the file.
  if (station_blocks::Find(signalType) != nullptr) with.signalType = signalType;
  with.countryCode = NumberBehind(bytes, "countrycode=\"", with.countryCode);
  return with;
}

ComPtr<IZorTunedex> OpenDatabase(const Scratch& scratch, const OpenedWith& with) {
  ComPtr<IZorTunedex> database = NewDatabase();
  Require(SUCCEEDED(database->Open(scratch.Path().Get(), with.countryCode, with.signalType)));
  return database;
}

ComPtr<IChannelInfoMgr> ListOf(const ComPtr<IZorTunedex>& database, InputSignalType signalType) {
  ComPtr<IChannelInfoMgr> list;
  Require(database->GetChannelInfoMgr(signalType, list.Receive()) == S_OK);
  return list;
}
