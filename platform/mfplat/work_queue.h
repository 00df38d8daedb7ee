// The platform's work queue: one thread that runs queued jobs in order. It starts with
// the first job and is joined when the process ends.
#pragma once

#include <functional>

#include "windows.h"

namespace tessel::platform {

// Queues job to run on the work-queue thread. E_OUTOFMEMORY if it can't be queued.
HRESULT PostToWorkQueue(std::function<void()> job);

// Returns once every job queued before the call has run; at once on the work-queue
// thread itself, which can't wait for its own jobs.
void DrainWorkQueue();

}  // namespace tessel::platform
