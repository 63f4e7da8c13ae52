#pragma once

#include <map>
#include <memory>
#include <string>

/// While it lives, the registry's HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER and HKEY_CLASSES_ROOT are
/// empty places of the test's own.
class RegistrySandbox {
 public:
  RegistrySandbox();
  RegistrySandbox(const RegistrySandbox&) = delete;
  RegistrySandbox& operator=(const RegistrySandbox&) = delete;
  ~RegistrySandbox();

  /// Values by name, as a .reg file writes their data.
  using Values = std::map<std::string, std::string>;
  /// Every key that is there, parents too, by its full name.
  using Contents = std::map<std::string, Values>;
  Contents Read() const;

  /// The file that stands for the registry; empty where it is no file.
  std::string FileName() const;

 private:
  struct Place;
  std::unique_ptr<Place> m_place;
};

/// A text as the data of a value.
inline std::string QuotedData(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}
