#include "platform/registry.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/files.h"
#include "platform/linux/files/file_descriptor.h"
#include "platform/linux/registry/reg_file.h"
#include "platform/linux/registry/reg_text.h"
#include "platform/text.h"

namespace registry {
namespace {

constexpr std::size_t kLargestFile = std::size_t{256} * 1024 * 1024;

/// Guards the name, and keeps reading, changing and writing of one call together.
std::mutex mutex;
std::string& FileName() {
  static std::string& name = *new std::string;
  return name;
}

std::u16string_view NameOf(Root root) {
  switch (root) {
    case Root::LocalMachine:
      return u"HKEY_LOCAL_MACHINE";
    case Root::CurrentUser:
      return u"HKEY_CURRENT_USER";
    case Root::ClassesRoot:
      break;
  }
  return u"HKEY_CLASSES_ROOT";
}

/// False for a name that cannot stand in a line of the file.
bool IsName(std::string_view name) {
  return std::none_of(name.begin(), name.end(),
                      [](char byte) { return static_cast<unsigned char>(byte) < 0x20; });
}

/// Deleting such a key would take everything that the root holds.
bool IsRoot(std::string_view key) { return key.find_first_not_of('\\') == std::string_view::npos; }

std::u16string PathOf(Root root, std::string_view key) {
  while (key.ends_with('\\')) key.remove_suffix(1);
  std::u16string path(NameOf(root));
  if (!key.empty()) path.append(u"\\").append(text::FromUtf8(key).View());
  return path;
}

/// The whole file. None when it cannot be read or is too large; `isMissing` tells that there is
/// none.
std::optional<std::string> ReadFile(const std::string& name, bool& isMissing) {
  const FileDescriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  isMissing = !file.IsOpen() && errno == ENOENT;
  struct stat found {};
  if (!file.IsOpen() || fstat(file.Get(), &found) != 0 || !S_ISREG(found.st_mode)) {
    return std::nullopt;
  }
  if (found.st_size > static_cast<off_t>(kLargestFile)) return std::nullopt;
  std::string bytes;
  std::vector<char> block(std::size_t{64} * 1024);
  ssize_t count = 0;
  while ((count = ReadSome(file.Get(), block.data(), block.size())) > 0) {
    bytes.append(block.data(), static_cast<std::size_t>(count));
    if (bytes.size() > kLargestFile) return std::nullopt;
  }
  if (count < 0) return std::nullopt;
  return bytes;
}

/// Fills `file`; a missing one is empty. False when it may not be read, or, for a change, replaced.
bool Load(RegFile& file, bool forChange) {
  if (FileName().empty()) return false;
  bool isMissing = false;
  const std::optional<std::string> bytes = ReadFile(FileName(), isMissing);
  if (!bytes) return isMissing;
  return file.Parse(*bytes) && (!forChange || file.IsWhole());
}

template <typename Ask>
bool Read(Ask ask) {
  const std::lock_guard lock(mutex);
  RegFile file;
  return Load(file, false) && ask(file);
}

/// `edit` answers whether there is something to write.
template <typename Edit>
HRESULT Change(Edit edit) {
  const std::lock_guard lock(mutex);
  RegFile file;
  if (!Load(file, true)) return E_FAIL;
  if (!edit(file)) return S_OK;
  files::AtomicFile target(FileName());
  target.Write(file.Format());
  return target.Commit() ? S_OK : E_FAIL;
}

}  // namespace

HRESULT ReadText(Root root, std::string_view key, std::string_view name, char* buffer,
                 std::size_t size) {
  const bool isRead = Read([&](const RegFile& file) {
    const std::u16string* value = file.FindText(PathOf(root, key), text::FromUtf8(name).View());
    if (value == nullptr) return false;
    // A text ends at its first zero, whatever the value holds behind it.
    const std::string narrow = text::ToNarrow(value->c_str());
    if (narrow.size() >= size) return false;
    std::copy(narrow.begin(), narrow.end(), buffer);
    buffer[narrow.size()] = '\0';
    return true;
  });
  return isRead ? S_OK : E_FAIL;
}

bool KeyExists(Root root, std::string_view key) {
  return Read([&](const RegFile& file) { return file.HasKey(PathOf(root, key)); });
}

bool HasSubKeys(Root root, std::string_view key) {
  return Read([&](const RegFile& file) { return file.HasSubKeys(PathOf(root, key)); });
}

HRESULT CreateKey(Root root, std::string_view key) {
  if (!IsName(key)) return E_INVALIDARG;
  return Change([&](RegFile& file) {
    file.AddKey(PathOf(root, key));
    return true;
  });
}

HRESULT SetText(Root root, std::string_view key, std::string_view name, std::string_view value) {
  if (!IsName(key) || !IsName(name)) return E_INVALIDARG;
  return Change([&](RegFile& file) {
    file.SetText(PathOf(root, key), text::FromUtf8(name).View(), text::FromUtf8(value).View());
    return true;
  });
}

HRESULT SetNumber(Root root, std::string_view key, std::string_view name, std::uint32_t value) {
  if (!IsName(key) || !IsName(name)) return E_INVALIDARG;
  return Change([&](RegFile& file) {
    file.SetNumber(PathOf(root, key), text::FromUtf8(name).View(), value);
    return true;
  });
}

HRESULT SetTexts(Root root, std::string_view key, std::string_view name,
                 const std::vector<std::string>& values) {
  if (!IsName(key) || !IsName(name)) return E_INVALIDARG;
  std::u16string list;
  for (const std::string& value : values) {
    if (value.empty()) return E_INVALIDARG;
    list.append(text::FromUtf8(value).View()).push_back(u'\0');
  }
  return Change([&](RegFile& file) {
    file.SetBytes(PathOf(root, key), text::FromUtf8(name).View(), RegFile::Kind::TextList,
                  reg_text::ToBytes(list + u'\0'));
    return true;
  });
}

HRESULT SetBytes(Root root, std::string_view key, std::string_view name, std::string_view bytes) {
  if (!IsName(key) || !IsName(name)) return E_INVALIDARG;
  return Change([&](RegFile& file) {
    file.SetBytes(PathOf(root, key), text::FromUtf8(name).View(), RegFile::Kind::Binary, bytes);
    return true;
  });
}

HRESULT DeleteValue(Root root, std::string_view key, std::string_view name) {
  return Change([&](RegFile& file) {
    return file.DeleteValue(PathOf(root, key), text::FromUtf8(name).View());
  });
}

HRESULT DeleteKey(Root root, std::string_view key) {
  if (IsRoot(key)) return E_INVALIDARG;
  bool hasSubKeys = false;
  const HRESULT hr = Change([&](RegFile& file) {
    const std::u16string path = PathOf(root, key);
    hasSubKeys = file.HasSubKeys(path);
    const bool isDeleted = !hasSubKeys && file.HasKey(path);
    if (isDeleted) file.DeleteTree(path);
    return isDeleted;
  });
  return hasSubKeys ? S_FALSE : hr;
}

HRESULT DeleteTree(Root root, std::string_view key) {
  if (IsRoot(key)) return E_INVALIDARG;
  return Change([&](RegFile& file) {
    const std::u16string path = PathOf(root, key);
    const bool isThere = file.HasKey(path);
    file.DeleteTree(path);
    return isThere;
  });
}

}  // namespace registry

HRESULT ZorTunedexSetRegistryFile(const char* path) {
  if (path != nullptr && *path == '\0') return E_INVALIDARG;
  const std::lock_guard lock(registry::mutex);
  registry::FileName() = path ? path : "";
  return S_OK;
}
