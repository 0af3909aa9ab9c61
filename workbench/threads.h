// The number of threads that a subcommand works with.
#pragma once

#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/task_arena.h>

#include <CLI/CLI.hpp>

namespace velto {

inline void addThreadsOption(CLI::App& command, int& threads) {
  command.add_option("-t,--threads", threads, "Threads (default: all)")->check(CLI::Range(1, 1024));
}

// The number asked for, 0: as many as there are processors that this process may use.
inline int threadCount(int wanted) {
  return wanted > 0 ? wanted : tbb::info::default_concurrency();
}

// Runs `work` in an arena of so many threads. Returns what `work` returns.
template <typename Work>
auto withThreads(int threads, Work work) {
  const int used = threadCount(threads);
  const tbb::global_control most(tbb::global_control::max_allowed_parallelism,
                                 static_cast<std::size_t>(used));
  return tbb::task_arena(used).execute(work);
}

}  // namespace velto
