#pragma once

#include "platform/com.h"

/// See platform/component.h.
class Component {
 public:
  Component() = default;
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) const {
    return DllGetClassObject(rclsid, riid, ppv);
  }
};
