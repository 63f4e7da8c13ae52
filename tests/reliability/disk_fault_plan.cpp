#include "reliability/disk_fault_plan.h"

namespace disk_faults {
namespace {

bool isOn = false;
Fault chosen = Fault::Device;
int left = 0;
int calls = 0;
std::string order;

bool Stays() {
  return chosen == Fault::NoSpace || chosen == Fault::NoRights || chosen == Fault::Device;
}

}  // namespace

bool IsHit() {
  if (!isOn) return false;
  const int number = calls++;
  return number == left || (number > left && Stays());
}

Fault Chosen() { return chosen; }

bool EndsProcess() { return chosen == Fault::KillBefore || chosen == Fault::KillHalf; }

Scope::Scope(Fault fault, int position) {
  chosen = fault;
  left = position;
  calls = 0;
  order.clear();
  isOn = true;
}

Scope::~Scope() { isOn = false; }

int Calls() { return calls; }

void Note(char call) {
  if (isOn) order += call;
}

const std::string& Order() { return order; }

}  // namespace disk_faults
