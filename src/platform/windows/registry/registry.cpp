#include "platform/registry.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/text.h"

namespace registry {
namespace {

class Key {
 public:
  Key() = default;
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  ~Key() {
    if (m_key) RegCloseKey(m_key);
  }
  HKEY Get() const { return m_key; }
  HKEY* Receive() { return &m_key; }

 private:
  HKEY m_key = nullptr;
};

HKEY HandleOf(Root root) {
  switch (root) {
    case Root::LocalMachine:
      return HKEY_LOCAL_MACHINE;
    case Root::CurrentUser:
      return HKEY_CURRENT_USER;
    case Root::ClassesRoot:
      return HKEY_CLASSES_ROOT;
  }
  return nullptr;
}

HRESULT ToHr(LSTATUS status) { return HRESULT_FROM_WIN32(static_cast<DWORD>(status)); }

bool Open(Root root, std::string_view path, Key& key) {
  const Bstr wide = text::FromUtf8(path);
  return RegOpenKeyExW(HandleOf(root), wide.Get(), 0, KEY_READ, key.Receive()) == ERROR_SUCCESS;
}

HRESULT Create(Root root, std::string_view path, Key& key) {
  const Bstr wide = text::FromUtf8(path);
  return ToHr(RegCreateKeyExW(HandleOf(root), wide.Get(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                              KEY_READ | KEY_WRITE, nullptr, key.Receive(), nullptr));
}

HRESULT SetValue(Root root, std::string_view path, std::string_view name, DWORD type,
                 const void* data, std::size_t size) {
  Key key;
  const HRESULT hr = Create(root, path, key);
  if (FAILED(hr)) return hr;
  return ToHr(RegSetValueExW(key.Get(), text::FromUtf8(name).Get(), 0, type,
                             static_cast<const BYTE*>(data), static_cast<DWORD>(size)));
}

/// The text up to its first terminator. Values may lack one, or have half a character at the end.
bool QueryText(HKEY key, std::string_view name, std::wstring& value) {
  const Bstr wideName = text::FromUtf8(name);
  DWORD type = 0;
  DWORD size = 0;
  if (RegQueryValueExW(key, wideName.Get(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
    return false;
  }
  if (type != REG_SZ && type != REG_EXPAND_SZ) return false;
  std::vector<wchar_t> data(size / sizeof(wchar_t) + 1);
  size = static_cast<DWORD>(data.size() * sizeof(wchar_t));
  const auto bytes = reinterpret_cast<BYTE*>(data.data());
  if (RegQueryValueExW(key, wideName.Get(), nullptr, &type, bytes, &size) != ERROR_SUCCESS) {
    return false;
  }
  if (type != REG_SZ && type != REG_EXPAND_SZ) return false;
  const auto end = data.begin() + static_cast<std::ptrdiff_t>(size / sizeof(wchar_t));
  value.assign(data.begin(), std::find(data.begin(), end, L'\0'));
  return true;
}

}  // namespace

HRESULT ReadText(Root root, std::string_view key, std::string_view name, char* buffer,
                 std::size_t size) {
  Key opened;
  std::wstring value;
  if (!Open(root, key, opened) || !QueryText(opened.Get(), name, value)) return E_FAIL;
  const std::string narrow = text::ToNarrow(value);
  if (narrow.size() >= size) return E_FAIL;
  std::copy_n(narrow.c_str(), narrow.size() + 1, buffer);
  return S_OK;
}

bool KeyExists(Root root, std::string_view key) {
  Key opened;
  return Open(root, key, opened);
}

HRESULT CreateKey(Root root, std::string_view key) {
  Key created;
  return Create(root, key, created);
}

HRESULT SetText(Root root, std::string_view key, std::string_view name, std::string_view value) {
  const Bstr wide = text::FromUtf8(value);
  return SetValue(root, key, name, REG_SZ, wide.Get(), (wide.View().size() + 1) * sizeof(wchar_t));
}

HRESULT SetNumber(Root root, std::string_view key, std::string_view name, std::uint32_t value) {
  return SetValue(root, key, name, REG_DWORD, &value, sizeof(value));
}

HRESULT SetTexts(Root root, std::string_view key, std::string_view name,
                 const std::vector<std::string>& values) {
  std::wstring list;
  for (const std::string& value : values) {
    if (value.empty()) return E_INVALIDARG;
    list.append(text::FromUtf8(value).View()).push_back(L'\0');
  }
  return SetValue(root, key, name, REG_MULTI_SZ, list.c_str(), (list.size() + 1) * sizeof(wchar_t));
}

HRESULT SetBytes(Root root, std::string_view key, std::string_view name, std::string_view bytes) {
  return SetValue(root, key, name, REG_BINARY, bytes.data(), bytes.size());
}

HRESULT DeleteValue(Root root, std::string_view key, std::string_view name) {
  Key opened;
  LSTATUS status =
      RegOpenKeyExW(HandleOf(root), text::FromUtf8(key).Get(), 0, KEY_SET_VALUE, opened.Receive());
  if (status == ERROR_SUCCESS) {
    status = RegDeleteValueW(opened.Get(), text::FromUtf8(name).Get());
  }
  return status == ERROR_FILE_NOT_FOUND ? S_OK : ToHr(status);
}

HRESULT DeleteKey(Root root, std::string_view key) {
  if (key.empty()) return E_INVALIDARG;
  if (HasSubKeys(root, key)) return S_FALSE;
  // The call itself refuses a key that has got one in the meantime.
  const LSTATUS status = RegDeleteKeyW(HandleOf(root), text::FromUtf8(key).Get());
  return status == ERROR_FILE_NOT_FOUND ? S_OK : ToHr(status);
}

HRESULT DeleteTree(Root root, std::string_view key) {
  // An empty key would mean everything below the root.
  if (key.empty()) return E_INVALIDARG;
  const LSTATUS status = RegDeleteTreeW(HandleOf(root), text::FromUtf8(key).Get());
  return status == ERROR_FILE_NOT_FOUND ? S_OK : ToHr(status);
}

bool HasSubKeys(Root root, std::string_view key) {
  Key opened;
  DWORD count = 0;
  return Open(root, key, opened) &&
         RegQueryInfoKeyW(opened.Get(), nullptr, nullptr, nullptr, &count, nullptr, nullptr,
                          nullptr, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS &&
         count > 0;
}

}  // namespace registry
