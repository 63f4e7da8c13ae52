// What a host sees of a ComError, which leaves the library as it is: one of the same compiler
// catches it, for others it is a structured exception.

#include "contract/database.h"
#include "platform/com_error.h"
#include "support/expect.h"

namespace {

// A text for whose copy there is never memory: it says that it has 4 GB. Nothing of it is read.
class EndlessText {
 public:
  BSTR Get() { return m_units + 2; }

 private:
  OLECHAR m_units[4] = {0xFFFF, 0xFFFF};
};

DWORD g_seen = 0;

LONG CALLBACK Note(EXCEPTION_POINTERS* exception) {
  // Unwinding raises a second one.
  if (g_seen == 0) g_seen = exception->ExceptionRecord->ExceptionCode;
  return EXCEPTION_CONTINUE_SEARCH;
}

TEST(RaisedError, IsCaughtAndSeen) {
  const ComPtr<IZorTunedex> database = NewDatabase();
  ComPtr<ILNBInfoMgr> list;
  ComPtr<ILNBInfo> record;
  EXPECT_TRUE(SUCCEEDED(database->GetLNBInfoMgr(list.Receive())));
  ExpectHr(S_OK, list->CreateLNBInfo(record.Receive()));
  ExpectHr(S_OK, record->SetType(Wide("before").Get()));
  EndlessText text;
  HRESULT raised = S_OK;
  void* const handler = AddVectoredExceptionHandler(1, Note);
  try {
    record->SetType(text.Get());
  } catch (const ComError& error) {
    raised = error.Error();
  }
  RemoveVectoredExceptionHandler(handler);
  ExpectHr(E_OUTOFMEMORY, raised);
  EXPECT_EQ(0x20474343U, g_seen);
  Bstr type;
  ExpectHr(S_OK, record->GetType(type.Receive()));
  ExpectText(OLESTR("before"), type.Get());
}

}  // namespace
