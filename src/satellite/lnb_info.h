#pragma once

#include "platform/bstr.h"
#include "satellite/indexed_record.h"

/// One type of low-noise block converter. Frequencies are kept as they come.
class CLNBInfo : public IndexedRecord<CLNBInfo, ILNBInfo> {
 public:
  HRESULT STDMETHODCALLTYPE GetType(BSTR* pbstrType) override;
  HRESULT STDMETHODCALLTYPE SetType(BSTR bstrType) override;
  HRESULT STDMETHODCALLTYPE GetLowFreq(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetLowFreq(DWORD dwFreq) override;
  HRESULT STDMETHODCALLTYPE GetHighFreq(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetHighFreq(DWORD dwFreq) override;
  HRESULT STDMETHODCALLTYPE GetSwitchFreq(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetSwitchFreq(DWORD dwFreq) override;

 private:
  Bstr m_type;
  DWORD m_lowFreq = 0;
  DWORD m_highFreq = 0;
  DWORD m_switchFreq = 0;
};
