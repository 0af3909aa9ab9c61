#include "training/trainer.h"

#include "training/frames/vote_files.h"
#include "training/hmm/hmm_trainer.h"

namespace velto {

std::span<const Trainer> trainers() {
  static constexpr Trainer kTrainers[] = {
      {"vote", checkVoteData,
       [](const TrainingJob& job) { return voteFiles(trainVotes(job, planFor(job))); }},
      {"hmm", checkHmmData, trainHmmFiles},
  };
  return kTrainers;
}

}  // namespace velto
