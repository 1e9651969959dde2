#ifndef TESTS_SUPPORT_ALLOCATION_SWEEP_H
#define TESTS_SUPPORT_ALLOCATION_SWEEP_H

#include "tests/support/Sweep.h"

#include <cstddef>
#include <functional>
#include <string>

/** Size from which an allocation counts as large. */
constexpr int kLargeAllocation = 1 << 16;

/**
 * Runs an operation with the n-th large allocation, or the n-th of at least so many bytes, of an exported method
 * failing (std::bad_alloc), n = 1, 2, ... until it comes through; what the operation itself needs, outside of every
 * journal frame, never fails. Each time nothing may be thrown, references and lists are as before, journal frames
 * closed; the outputs are empty when the code is negative and answer and outputs are as ever when it is not. At least
 * one run must have failed. Where programs and libraries allocate by themselves (Windows) nothing is run.
 */
void sweepAllocations(const std::string& name, const std::function<SweepOutcome()>& operation,
                      std::size_t smallest = kLargeAllocation);

#endif
