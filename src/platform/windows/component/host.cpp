#include "platform/host.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstring>

#include "platform/arguments.h"
#include "platform/component.h"

namespace host {
namespace {

std::string ToUtf8(const wchar_t* wide) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  if (size <= 0) return {};
  std::string utf8(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide, -1, utf8.data(), size, nullptr, nullptr);
  utf8.pop_back();
  return utf8;
}

HRESULT CallPlain(const char* name) {
  const auto function = component::EntryPoint<HRESULT __stdcall()>(name);
  return function ? function() : HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND);
}

}  // namespace

std::vector<std::string> Arguments(int argc, char** argv) {
  std::vector<std::string> result;
  for (const std::wstring& argument : WideArguments(argc, argv)) {
    result.push_back(ToUtf8(argument.c_str()));
  }
  return result;
}

void Prepare() {
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  CoInitializeEx(nullptr, COINIT_MULTITHREADED);
}

std::optional<std::string> Environment(const char* name) {
  const std::wstring wide(name, name + std::strlen(name));
  std::wstring value;
  DWORD length = GetEnvironmentVariableW(wide.c_str(), nullptr, 0);
  if (length == 0) return std::nullopt;
  while (length > value.size()) {
    value.resize(length);
    length = GetEnvironmentVariableW(wide.c_str(), value.data(), length);
  }
  value.resize(length);
  return ToUtf8(value.c_str());
}

// Other character devices, NUL among them, have no console mode.
bool InputIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

std::optional<std::size_t> OutputWidth() {
  CONSOLE_SCREEN_BUFFER_INFO screen = {};
  if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &screen) == 0)
    return std::nullopt;
  const int columns = screen.srWindow.Right - screen.srWindow.Left + 1;
  if (columns <= 1) return std::nullopt;
  // A character in the last place moves the cursor to the next line.
  return static_cast<std::size_t>(columns) - 1;
}

// Large pages are a right there that hardly anybody has.
void PreferLargePages(void*, std::size_t) {}

HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
  return component::GetClassObject(rclsid, riid, ppv);
}

HRESULT CanUnloadNow() { return CallPlain("DllCanUnloadNow"); }
HRESULT RegisterServer() { return CallPlain("DllRegisterServer"); }
HRESULT UnregisterServer() { return CallPlain("DllUnregisterServer"); }

HRESULT SetCodePage(UINT) { return E_NOTIMPL; }
HRESULT SetRegistryFile(const char*) { return E_NOTIMPL; }

}  // namespace host
