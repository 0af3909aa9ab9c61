// The number of threads that a subcommand works with.
#pragma once

#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/task_arena.h>

namespace velto {

// Runs `work` in an arena of this many threads, 0: as many as there are processors. Returns what
// `work` returns.
template <typename Work>
auto withThreads(int threads, Work work) {
  const int used = threads > 0 ? threads : tbb::info::default_concurrency();
  const tbb::global_control most(tbb::global_control::max_allowed_parallelism,
                                 static_cast<std::size_t>(used));
  return tbb::task_arena(used).execute(work);
}

}  // namespace velto
