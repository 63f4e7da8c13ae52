#pragma once

#include <string_view>
#include <utility>

#include "platform/com.h"
#include "platform/com_error.h"

/// Text of the target's wide characters.
using WideView = std::basic_string_view<OLECHAR>;

/// Owns one BSTR. Every allocation that fails raises ComError(E_OUTOFMEMORY).
class Bstr {
 public:
  Bstr() = default;
  explicit Bstr(WideView text)
      : m_text(Checked(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())))) {}
  Bstr(Bstr&& other) noexcept : m_text(std::exchange(other.m_text, nullptr)) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(m_text, other.m_text);
    return *this;
  }
  ~Bstr() { SysFreeString(m_text); }

  /// Byte-exact copy, embedded zeros and odd lengths included; null stays null.
  static Bstr Copy(BSTR text) {
    Bstr result;
    if (text != nullptr) {
      result.m_text = Checked(
          SysAllocStringByteLen(reinterpret_cast<const char*>(text), SysStringByteLen(text)));
    }
    return result;
  }
  /// Takes over a BSTR that the caller owns.
  static Bstr Attach(BSTR text) {
    Bstr result;
    result.m_text = text;
    return result;
  }

  BSTR Get() const { return m_text; }
  WideView View() const { return {m_text ? m_text : OLESTR(""), SysStringLen(m_text)}; }
  bool IsEmpty() const { return SysStringLen(m_text) == 0; }
  /// Gives the text to the caller, who frees it.
  BSTR Release() { return std::exchange(m_text, nullptr); }
  void Reset() { *this = Bstr(); }
  /// Empties itself and is the place where a getter stores its text.
  BSTR* Receive() {
    Reset();
    return &m_text;
  }

 private:
  static BSTR Checked(BSTR text) {
    if (text == nullptr) throw ComError(E_OUTOFMEMORY);
    return text;
  }

  BSTR m_text = nullptr;
};
