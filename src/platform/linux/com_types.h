// COM types, result codes and entry points for hosts on Linux. Sizes and values are those of
// 64-bit Windows; the functions are exported by libZorTunedex.so.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

using HRESULT = std::int32_t;
using LONG = std::int32_t;
using BOOL = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using BYTE = std::uint8_t;
using CHAR = char;
using OLECHAR = char16_t;
using VARIANT_BOOL = std::int16_t;

/// Counted UTF-16 text: points at the first unit, a 32-bit byte length stands in front of it and a
/// zero unit behind it. Null and empty are both "no text". Made and freed with the Sys...
/// functions.
using BSTR = OLECHAR*;

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];
};
inline bool operator==(const GUID& a, const GUID& b) {
  return std::memcmp(&a, &b, sizeof(GUID)) == 0;
}
inline bool operator!=(const GUID& a, const GUID& b) { return !(a == b); }
using IID = GUID;
using CLSID = GUID;
using REFIID = const IID&;
using REFCLSID = const CLSID&;
using REFGUID = const GUID&;

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001U);
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002U);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003U);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005U);
constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFFU);
constexpr HRESULT E_ACCESSDENIED = static_cast<HRESULT>(0x80070005U);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000EU);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057U);
constexpr HRESULT CLASS_E_NOAGGREGATION = static_cast<HRESULT>(0x80040110U);
constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = static_cast<HRESULT>(0x80040111U);

constexpr bool SUCCEEDED(HRESULT hr) { return hr >= 0; }
constexpr bool FAILED(HRESULT hr) { return hr < 0; }

#define STDMETHODCALLTYPE
#define STDAPI extern "C" HRESULT
#define OLESTR(text) u##text

inline constexpr IID IID_IUnknown = {
    0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID IID_IClassFactory = {
    0x00000001, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID IID_IDispatch = {
    0x00020400, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

struct IUnknown {
  /// E_POINTER for a null out-pointer; E_NOINTERFACE (out-pointer null) for what is not answered.
  virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) = 0;
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;
};

struct IClassFactory : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* pUnkOuter, REFIID riid,
                                                   void** ppvObject) = 0;
  virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL fLock) = 0;
};

#pragma GCC visibility push(default)
extern "C" {
/// Copies zero-terminated text; null for null. Null when there is no memory.
BSTR SysAllocString(const OLECHAR* text);
/// `length` units, zeroed when `text` is null. Null when there is no memory.
BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
/// `length` bytes, zeroed when `text` is null. Null when there is no memory.
BSTR SysAllocStringByteLen(const char* text, UINT length);
void SysFreeString(BSTR text);
UINT SysStringLen(BSTR text);
UINT SysStringByteLen(BSTR text);

/// Memory that changes hands between host and library, such as station blocks.
void* CoTaskMemAlloc(std::size_t size);
void CoTaskMemFree(void* memory);

/// Class object of `rclsid` (only CLSID_ZorTunedex), asked for `riid` (usually IID_IClassFactory).
HRESULT DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv);
/// S_OK when no object and no lock keeps the library loaded, else S_FALSE.
HRESULT DllCanUnloadNow();
/// Writes the class into the registry file, with the library's full path. E_FAIL when the host
/// named no file, or one that cannot be read or written.
HRESULT DllRegisterServer();
/// Takes the class out again; what is missing is no error. S_FALSE when a foreign key below one of
/// ours kept it.
HRESULT DllUnregisterServer();
/// The same two (`install` not 0: register) for one user when a word of `commandLine` is "user": in
/// Software\Classes of HKEY_CURRENT_USER.
HRESULT DllInstall(BOOL install, const OLECHAR* commandLine);

/// Code page of narrow texts in this process: 932, 936, 949, 950, 1250 to 1258 or 65001 (UTF-8, the
/// default). E_INVALIDARG for one that cannot be had; the old one then stays.
HRESULT ZorTunedexSetCodePage(UINT codePage);
/// File in the .reg format that stands for the registry (null: none). Always S_OK or E_INVALIDARG.
HRESULT ZorTunedexSetRegistryFile(const char* path);
}
#pragma GCC visibility pop
