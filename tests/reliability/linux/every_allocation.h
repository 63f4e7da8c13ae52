// Calls with memory that ends at each of their allocations in turn.
#pragma once

#include <functional>

#include "reliability/linux/memory_faults.h"
#include "support/expect.h"

/// How a call tells that memory is missing: what builds texts at an interface may raise it, all
/// others answer it.
enum class Tells { Answers, MayRaise };

/// A call, what it needs each time, and what has to hold afterwards: `check` is told the result,
/// the raised one where it was raised, and whether memory was missing.
struct Attempt {
  std::function<void()> prepare;
  std::function<HRESULT()> call;
  std::function<void(HRESULT hr, bool hasFailed)> check;
  Tells tells = Tells::Answers;
};

/// Makes the attempt with memory that ends one allocation later each time, until none is missing.
/// First one allocation alone fails, then all that follow it, too.
void ForEveryAllocation(const Attempt& attempt);

/// The call tells E_OUTOFMEMORY wherever memory ends.
void ExpectToldEverywhere(const std::function<HRESULT()>& call, Tells tells = Tells::Answers);
