#pragma once

#include "core/gen_com_obj.h"
#include "platform/bstr.h"

/// One type of low-noise block converter. Frequencies are kept as they come.
class CLNBInfo : public CGenComObj<CLNBInfo, ILNBInfo> {
 public:
  HRESULT STDMETHODCALLTYPE GetIndex(UINT* pnIndex) override;
  HRESULT STDMETHODCALLTYPE SetIndex(UINT nIndex) override;
  HRESULT STDMETHODCALLTYPE GetType(BSTR* pbstrType) override;
  HRESULT STDMETHODCALLTYPE SetType(BSTR bstrType) override;
  HRESULT STDMETHODCALLTYPE GetLowFreq(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetLowFreq(DWORD dwFreq) override;
  HRESULT STDMETHODCALLTYPE GetHighFreq(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetHighFreq(DWORD dwFreq) override;
  HRESULT STDMETHODCALLTYPE GetSwitchFreq(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetSwitchFreq(DWORD dwFreq) override;
  HRESULT STDMETHODCALLTYPE GetDirty(LONG* plDirty) override;
  HRESULT STDMETHODCALLTYPE SetDirty(LONG lDirty) override;

 private:
  UINT m_index = 0;
  Bstr m_type;
  DWORD m_lowFreq = 0;
  DWORD m_highFreq = 0;
  DWORD m_switchFreq = 0;
  LONG m_dirty = 0;
};
