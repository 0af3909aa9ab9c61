#include "training/trainer.h"

#include <utility>

#include "training/frames/vote_files.h"
#include "training/hmm/hmm_trainer.h"

namespace velto {

void requireTranscripts(const TrainingJob& job) {
  for (const auto& [transcripts, kind] :
       {std::pair{&job.coding, "coding"}, {&job.noncoding, "non-coding"}}) {
    if (transcripts->size() >= kLeastTranscripts) continue;
    throw TooLittleData("too little data: " + std::to_string(transcripts->size()) + " " + kind +
                        " transcripts, at least " + std::to_string(kLeastTranscripts) +
                        " are needed; with fewer the human model does better");
  }
}

std::span<const Trainer> trainers() {
  static constexpr Trainer kTrainers[] = {
      {"vote", true, checkVoteData,
       [](const TrainingJob& job) { return voteFiles(trainVotes(job, planFor(job))); }},
      {"hmm", false, checkHmmData, trainHmmFiles},
  };
  return kTrainers;
}

}  // namespace velto
