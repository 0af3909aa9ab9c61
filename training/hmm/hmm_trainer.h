// Trains the posterior decoder's model from transcripts.
#pragma once

#include "hmm/hmm_model.h"
#include "training/hmm/network_trainer.h"
#include "training/trainer.h"

namespace velto {

struct HmmPlan {
  NetworkPlan network;
  ReadMixture mixture = standardMixture();
  std::size_t calibrationReads = 3000;  // per profile
};

// What `velto train` follows for so many bases of coding transcripts: fewer of them bear fewer
// steps before the network learns them by heart. A quick try takes three tenths of the steps.
HmmPlan standardHmmPlan(double codingBases, bool quick = false);

struct TrainedHmm {
  HmmModel model;
  int steps = 0;                    // of the network's weights
  double heldBackLikelihood = 0.0;  // natural logarithm of the probability of the true paths per
                                    // 1000 bases of reads of the held-back part
};

// Throws TooLittleData for fewer than kLeastTranscripts of a kind, and unless every part of them
// has something to count and to draw from.
void checkHmmData(const TrainingJob& job);

// Counts the tables, trains the network with the tables that lack each read's part, and fits the
// decision to reads of the part that is held back. Trains with all threads of the calling arena;
// the result does not depend on their number. Throws TooLittleData.
TrainedHmm trainHmm(const TrainingJob& job, const HmmPlan& plan);

// The same by the standard plan, as files of a model directory.
TrainedDecoder trainHmmFiles(const TrainingJob& job);

}  // namespace velto
