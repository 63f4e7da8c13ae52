/* A host of another language, on the header that the IDL compiler makes and nothing else: it cannot
   catch what the library raises, and says what it saw. */
#define INITGUID
#include <ZorTunedex.h>
#include <stdio.h>

static LONG CALLBACK Stop(EXCEPTION_POINTERS* exception) {
  printf("raised %08lx\n", exception->ExceptionRecord->ExceptionCode);
  fflush(stdout);
  ExitProcess(3);
}

int main(void) {
  typedef HRESULT(STDAPICALLTYPE * GetClass)(REFCLSID, REFIID, void**);
  /* A text that says it has 4 GB: for a copy there is never memory. */
  OLECHAR endless[4] = {0xFFFF, 0xFFFF, 0, 0};
  IClassFactory* factory = NULL;
  IZorTunedex* database = NULL;
  ILNBInfoMgr* list = NULL;
  ILNBInfo* record = NULL;
  HMODULE library = LoadLibraryW(L"ZorTunedex.dll");
  GetClass getClass = (GetClass)(void*)GetProcAddress(library, "DllGetClassObject");
  if (getClass == NULL || FAILED(CoInitializeEx(NULL, COINIT_MULTITHREADED)) ||
      FAILED(getClass(&CLSID_ZorTunedex, &IID_IClassFactory, (void**)&factory)) ||
      FAILED(factory->lpVtbl->CreateInstance(factory, NULL, &IID_IZorTunedex, (void**)&database)) ||
      FAILED(database->lpVtbl->GetLNBInfoMgr(database, &list)) ||
      FAILED(list->lpVtbl->CreateLNBInfo(list, &record))) {
    return 1;
  }
  AddVectoredExceptionHandler(1, Stop);
  record->lpVtbl->SetType(record, endless + 2);
  return 2;
}
