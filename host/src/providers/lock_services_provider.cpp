// vorna.LockServices#1 as the host serves it. A lock word holds 0 when free, 1 when
// held and 2 when held with threads asleep on it; a thread that finds it held marks it
// 2 and sleeps on the word until the holder's release wakes one sleeper.
#include "providers/host_services.h"
#include "providers/providers.h"
#include "vorna/lockservices.h"

namespace vorna::host {

namespace {

constexpr UInt32 FREE = 0;
constexpr UInt32 HELD = 1;
constexpr UInt32 CONTENDED = 2;

void Acquire(std::atomic<UInt32>& state) {
  UInt32 seen = FREE;
  if (state.compare_exchange_strong(seen, HELD, std::memory_order_acquire)) return;
  if (seen != CONTENDED) seen = state.exchange(CONTENDED, std::memory_order_acquire);
  while (seen != FREE) {
    state.wait(CONTENDED, std::memory_order_relaxed);
    seen = state.exchange(CONTENDED, std::memory_order_acquire);
  }
}

void Release(std::atomic<UInt32>& state) {
  if (state.exchange(FREE, std::memory_order_release) == CONTENDED) state.notify_one();
}

Result<void> Synchronized(LockWord* lock, LockServices::LockedFunction function, void* context) {
  Acquire(lock->state);
  Result<void> result = function(context);
  Release(lock->state);
  return result;
}

LockServices::Table MakeTable() {
  LockServices::Table table{};
  table.Synchronized = &Synchronized;
  return table;
}

const LockServices::Table g_table = MakeTable();

}  // namespace

void RegisterLockServicesProvider() { RegisterProvider(LockServices::ID, &g_table, LockServices::COUNT); }

}  // namespace vorna::host
