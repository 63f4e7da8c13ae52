#include "satellite/lnb_info.h"

#include "satellite/fields.h"

HRESULT STDMETHODCALLTYPE CLNBInfo::GetIndex(UINT* pnIndex) {
  return fields::Get(m_index, pnIndex);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::SetIndex(UINT nIndex) { return fields::Set(m_index, nIndex); }

HRESULT STDMETHODCALLTYPE CLNBInfo::GetType(BSTR* pbstrType) {
  return fields::Get(m_type, pbstrType);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::SetType(BSTR bstrType) { return fields::Set(m_type, bstrType); }

HRESULT STDMETHODCALLTYPE CLNBInfo::GetLowFreq(DWORD* pdwFreq) {
  return fields::Get(m_lowFreq, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::SetLowFreq(DWORD dwFreq) {
  return fields::Set(m_lowFreq, dwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::GetHighFreq(DWORD* pdwFreq) {
  return fields::Get(m_highFreq, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::SetHighFreq(DWORD dwFreq) {
  return fields::Set(m_highFreq, dwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::GetSwitchFreq(DWORD* pdwFreq) {
  return fields::Get(m_switchFreq, pdwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::SetSwitchFreq(DWORD dwFreq) {
  return fields::Set(m_switchFreq, dwFreq);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::GetDirty(LONG* plDirty) {
  return fields::Get(m_dirty, plDirty);
}

HRESULT STDMETHODCALLTYPE CLNBInfo::SetDirty(LONG lDirty) { return fields::Set(m_dirty, lDirty); }
