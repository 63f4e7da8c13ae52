#include <new>
#include <system_error>

#include "platform/host.h"
#include "platform/windows/dom/memory_stream.h"
#include "platform/windows/dom/msxml.h"
#include "platform/windows/files/file_placing.h"
#include "platform/windows/files/temporary_file.h"
#include "platform/windows/files/wide_path.h"
#include "platform/windows/text/code_page.h"

namespace host {
namespace {

std::wstring NameOf(const std::string& utf8) {
  return wide_path::Lengthen(std::wstring(code_page::Widen(CP_UTF8, utf8).View()));
}

/// An error in words that are the same in every language of the system.
std::string TextOf(DWORD error) {
  return std::system_category().default_error_condition(static_cast<int>(error)).message();
}

std::string TextOfResult(HRESULT hr) { return TextOf(static_cast<DWORD>(HRESULT_CODE(hr))); }

bool IsFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Where MSXML gave up; it counts from 1, and says 0 where it does not know.
Damage DamageOf(IXMLDOMDocument2* document) {
  ComPtr<IXMLDOMParseError> error;
  LONG line = 0;
  LONG column = 0;
  if (document->get_parseError(error.Receive()) != S_OK) return {};
  const bool isTold = error->get_line(&line) == S_OK && error->get_linepos(&column) == S_OK;
  if (!isTold || line <= 0 || column <= 0) return {};
  return {{}, static_cast<unsigned>(line), static_cast<unsigned>(column)};
}

HRESULT RequireMemory(HRESULT hr) {
  if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
  return hr;
}

}  // namespace

std::optional<Damage> CheckFile(const std::string& path) {
  const std::wstring name = NameOf(path);
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return std::nullopt;
    return Damage{TextOf(error)};
  }
  if (IsFolder(attributes)) return Damage{"it is a folder"};
  ComPtr<IStream> stream;
  HRESULT hr = RequireMemory(memory_stream::FromFile(name, stream));
  if (FAILED(hr)) return Damage{TextOfResult(hr)};
  ComPtr<IXMLDOMDocument2> document;
  hr = RequireMemory(msxml::CreateDocument(document));
  if (FAILED(hr)) return Damage{"no document can be made"};
  if (RequireMemory(msxml::LoadStream(document.Get(), stream.Get())) == S_OK) return std::nullopt;
  return DamageOf(document.Get());
}

std::string WhyNotWritten(const std::string& path, std::size_t size) {
  const std::wstring target = wide_path::Resolve(NameOf(path));
  if (IsFolder(GetFileAttributesW(target.c_str()))) return "it is a folder";
  if (!placing::IsReplaceable(target)) return TextOf(ERROR_ACCESS_DENIED);
  const std::string bytes(size, ' ');
  std::wstring temporary;
  FileHandle file = temporary_file::Create(wide_path::DirectoryOf(target), temporary);
  if (!file.IsOpen()) return TextOf(GetLastError());
  const bool isWritten = file.Write(bytes) && FlushFileBuffers(file.Get()) != FALSE;
  const DWORD error = GetLastError();
  file.Close();
  DeleteFileW(temporary.c_str());
  return isWritten ? std::string() : TextOf(error);
}

}  // namespace host
