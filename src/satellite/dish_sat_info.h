#pragma once

#include "platform/bstr.h"
#include "satellite/indexed_record.h"

/// One satellite as received on one dish: its ID, a band and the frequencies of the LNB in use.
class CDishSatInfo : public IndexedRecord<CDishSatInfo, IDishSatInfo> {
 public:
  HRESULT STDMETHODCALLTYPE GetID(BSTR* pbstrID) override;
  HRESULT STDMETHODCALLTYPE SetID(BSTR bstrID) override;
  HRESULT STDMETHODCALLTYPE GetBand(BSTR* pbstrBand) override;
  HRESULT STDMETHODCALLTYPE SetBand(BSTR bstrBand) override;
  HRESULT STDMETHODCALLTYPE GetLowFreq(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetLowFreq(DWORD dwFreq) override;
  HRESULT STDMETHODCALLTYPE GetHighFreq(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetHighFreq(DWORD dwFreq) override;
  HRESULT STDMETHODCALLTYPE GetSwitchFreq(DWORD* pdwFreq) override;
  HRESULT STDMETHODCALLTYPE SetSwitchFreq(DWORD dwFreq) override;

 private:
  Bstr m_id;
  Bstr m_band;
  DWORD m_lowFreq = 0;
  DWORD m_highFreq = 0;
  DWORD m_switchFreq = 0;
};
