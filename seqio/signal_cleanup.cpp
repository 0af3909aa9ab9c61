#include "seqio/signal_cleanup.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <climits>
#include <cstring>

namespace velto {
namespace {

// ---- The registry: of fixed size and without locks, since a signal handler reads it

enum SlotState { kFree, kBeingFilled, kFilled };

struct Slot {
  std::atomic<int> state;
  char path[PATH_MAX];
};
static_assert(std::atomic<int>::is_always_lock_free);

constexpr int kSlots = 256;  // the files of a model directory, many times over
Slot slots[kSlots];

// -1 if all are taken.
int takeSlot() {
  for (int i = 0; i < kSlots; ++i) {
    int expected = kFree;
    if (slots[i].state.compare_exchange_strong(expected, kBeingFilled)) return i;
  }
  return -1;
}

// ---- The handler: only calls that are safe in one

bool removeFolders() {
  bool removed = false;
  for (const Slot& slot : slots) {
    if (slot.state == kFilled && rmdir(slot.path) == 0) removed = true;
  }
  return removed;
}

void removeAndEnd(int signalNumber) {
  for (const Slot& slot : slots) {
    if (slot.state == kFilled) unlink(slot.path);
  }
  while (removeFolders()) {
  }  // again, since a folder may have held another
  signal(signalNumber, SIG_DFL);
  raise(signalNumber);
}

}  // namespace

void cleanUpAtSignals() {
  for (const int signalNumber : {SIGHUP, SIGINT, SIGTERM, SIGXFSZ}) {
    struct sigaction action;
    sigaction(signalNumber, nullptr, &action);
    if (action.sa_handler == SIG_IGN) continue;  // nohup, or a background job of a script
    action.sa_handler = removeAndEnd;
    action.sa_flags = 0;
    sigfillset(&action.sa_mask);
    sigaction(signalNumber, &action, nullptr);
  }
}

RemovedAtSignal::RemovedAtSignal(const std::string& path)
    : slot_(path.size() < PATH_MAX ? takeSlot() : -1) {
  if (slot_ < 0) return;
  std::memcpy(slots[slot_].path, path.c_str(), path.size() + 1);
  slots[slot_].state = kFilled;
}

RemovedAtSignal::~RemovedAtSignal() {
  if (slot_ >= 0) slots[slot_].state = kFree;
}

}  // namespace velto
