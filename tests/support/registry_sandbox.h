#pragma once

#include <memory>

/// While it lives, HKEY_LOCAL_MACHINE is an empty place of the test's own.
class RegistrySandbox {
 public:
  RegistrySandbox();
  RegistrySandbox(const RegistrySandbox&) = delete;
  RegistrySandbox& operator=(const RegistrySandbox&) = delete;
  ~RegistrySandbox();

 private:
  struct Place;
  std::unique_ptr<Place> m_place;
};
