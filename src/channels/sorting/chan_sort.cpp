#include "channels/sorting/chan_sort.h"

#include <atomic>
#include <span>

#include "channels/sorting/introsort.h"

namespace chan_sort {

namespace {

using Record = ComPtr<IChannelInfo>;

// One direction for the whole process: sorts of several lists at once share it, and the last one
// that starts decides for all of them.
std::atomic<BOOL> direction{0};

// A value that a record does not give counts as 0.
UINT NumberOf(const Record& record) {
  UINT number = 0;
  record->GetChannelNo(&number);
  return number;
}

std::int32_t ServiceTypeOf(const Record& record) {
  EServiceType serviceType = ServiceUnknown;
  record->GetServiceType(&serviceType);
  return serviceType;
}

bool HasLowerNumber(const Record& a, const Record& b) { return NumberOf(a) < NumberOf(b); }

bool HasServiceTypeBefore(const Record& a, const Record& b) {
  return direction != 0 ? ServiceTypeOf(a) < ServiceTypeOf(b) : ServiceTypeOf(a) > ServiceTypeOf(b);
}

// No strict weak ordering, and kept so: the lists of all hosts have the order that it gives.
bool HasNumberBeforeButServiceTypeBehind(const Record& a, const Record& b) {
  return direction != 0 ? NumberOf(a) < NumberOf(b) && ServiceTypeOf(a) > ServiceTypeOf(b)
                        : NumberOf(a) > NumberOf(b) && ServiceTypeOf(a) < ServiceTypeOf(b);
}

using Before = bool (*)(const Record&, const Record&);

void Pass(Records& records, Before before) {
  IntroSort<Record, Before>(std::span<Record>(records), before).Run();
}

}  // namespace

void ByNumber(Records& records) { Pass(records, HasLowerNumber); }

void ByServiceType(Records& records, BOOL ascending) {
  direction = ascending;
  Pass(records, HasLowerNumber);
  Pass(records, HasServiceTypeBefore);
  Pass(records, HasNumberBeforeButServiceTypeBehind);
}

}  // namespace chan_sort
