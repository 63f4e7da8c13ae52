#include "countries/country_code.h"

#include <cstring>
#include <string>
#include <string_view>

#include "platform/os_version.h"
#include "platform/registry.h"

namespace {

// Canada stands in the telephony list under this number of its own.
constexpr std::uint32_t kCanada = 2;
constexpr std::uint32_t kCanadaInList = 107;
constexpr std::uint32_t kNetherlands = 31;
constexpr std::uint32_t kMacedonia = 389;

// The capitals inside "MicroSoft" are those of the key as it was always asked for.
constexpr char kCountryList[] =
    "Software\\MicroSoft\\Windows\\CurrentVersion\\Telephony\\Country List\\";

/// "Macedonia, The Former Yugoslav Republic of" with its parts in reading order.
std::string SecondPartFirst(std::string_view name) {
  const std::size_t comma = name.find(',');
  const std::string_view first = name.substr(0, comma);
  if (comma == name.npos) return std::string(first);
  std::string_view second = name.substr(comma + 1);
  second = second.substr(0, second.find(','));
  if (second.empty()) return std::string(first);
  if (second.front() == ' ') second.remove_prefix(1);
  return std::string(second).append(" ").append(first);
}

std::string Rearranged(std::uint32_t identifier, std::string_view name) {
  if (identifier == kNetherlands) return std::string(name.substr(0, name.find(',')));
  if (identifier == kMacedonia) return SecondPartFirst(name);
  return std::string(name);
}

}  // namespace

HRESULT GetRegistryCountryName(std::uint32_t code, char* buffer) {
  if (buffer == nullptr) return E_POINTER;
  const std::uint32_t identifier = code == kCanada ? kCanadaInList : code;
  const std::string key = kCountryList + std::to_string(identifier);
  char name[kCountryNameSize] = "";
  const HRESULT hr =
      registry::ReadText(registry::Root::LocalMachine, key, "Name", name, sizeof(name));
  if (FAILED(hr)) return E_FAIL;
  if (name[0] == '\0') return S_OK;
  // Parts change places and a comma becomes a blank: never longer than what was read.
  const std::string rearranged = Rearranged(identifier, name);
  std::memcpy(buffer, rearranged.c_str(), rearranged.size() + 1);
  return S_OK;
}

std::int32_t CCountryCode::GetIndexByCode(std::uint32_t code) const {
  return countries::FindRow(code);
}

std::int32_t CCountryCode::GetCodeByIndex(std::int32_t row) const {
  const countries::CountryRow* country = countries::RowAt(row);
  return country ? static_cast<std::int32_t>(country->code) : -1;
}

char* CCountryCode::GetNameByIndex(std::int32_t row, char* buffer) const {
  return GetNameByIndex(row, buffer, os::IsWindows9x());
}

char* CCountryCode::GetNameByIndex(std::int32_t row, char* buffer, bool windows9x) const {
  const countries::CountryRow* country = countries::RowAt(row);
  if (country == nullptr || buffer == nullptr) return nullptr;
  if (!windows9x && GetRegistryCountryName(country->code, buffer) == S_OK) return buffer;
  return m_table.GetTableName(row, buffer);
}

char* CCountryCode::GetNameByCode(std::uint32_t code, char* buffer) const {
  return GetNameByIndex(GetIndexByCode(code), buffer);
}
