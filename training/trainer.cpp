#include "training/trainer.h"

#include "training/frames/vote_files.h"

namespace velto {

std::span<const Trainer> trainers() {
  static constexpr Trainer kTrainers[] = {
      {"vote", [](const TrainingJob& job) { return voteFiles(trainVotes(job)); }},
  };
  return kTrainers;
}

}  // namespace velto
