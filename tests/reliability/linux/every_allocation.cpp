#include "reliability/linux/every_allocation.h"

#include <new>

#include "platform/com_error.h"

using memory_faults::Lasts;

namespace {

HRESULT ResultOf(const Attempt& attempt) {
  try {
    return attempt.call();
  } catch (const ComError& error) {
    if (attempt.tells == Tells::Answers) ADD_FAILURE() << "raised and not answered";
    return error.Error();
  } catch (const std::bad_alloc&) {
    ADD_FAILURE() << "a host knows ComError alone";
    return E_OUTOFMEMORY;
  }
}

/// Whether memory was missing.
bool Try(const Attempt& attempt, int position, Lasts lasts) {
  attempt.prepare();
  HRESULT hr = S_OK;
  bool hasFailed = false;
  {
    const memory_faults::Scope scope(position, lasts);
    hr = ResultOf(attempt);
    hasFailed = scope.HasFailed();
  }
  attempt.check(hr, hasFailed);
  return hasFailed;
}

}  // namespace

void ForEveryAllocation(const Attempt& attempt) {
  for (const Lasts lasts : {Lasts::Once, Lasts::ForGood}) {
    int position = 0;
    for (; Try(attempt, position, lasts); ++position) {
      ASSERT_LT(position, 20000);
      if (testing::Test::HasFailure()) {
        FAIL() << "allocation " << position << (lasts == Lasts::Once ? " once" : " for good");
      }
    }
    EXPECT_GT(position, 0) << "nothing was allocated";
  }
}

void ExpectToldEverywhere(const std::function<HRESULT()>& call, Tells tells) {
  ForEveryAllocation(
      {[] {}, call,
       [](HRESULT hr, bool hasFailed) { ExpectHr(hasFailed ? E_OUTOFMEMORY : S_OK, hr); }, tells});
}
