#include "platform/marshaler.h"

HRESULT CreateFreeThreadedMarshaler(IUnknown*, IUnknown** marshaler) {
  *marshaler = nullptr;
  return S_OK;
}
