// The evaluation of a model: what is counted of every read, summed up over sets of reads.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "evaluation/evaluation_counts.h"
#include "simulation/labelled_read.h"

namespace velto {

// Called shifts are looked for this far around a true one when their distances are reported.
constexpr int kDistanceReach = 60;

// Counts of one read.
struct ReadEvaluation {
  EvaluationCounts counts;
  std::vector<int> shiftDistances;  // bases, see shiftDistances; reach kDistanceReach
};

// Predicts a read; used by several threads at once.
using PredictRead = std::function<Prediction(const LabelledRead& read)>;

// Evaluates every read with all threads of the calling arena; the result, in the order of the
// reads, does not depend on their number.
std::vector<ReadEvaluation> evaluateReads(const std::vector<LabelledRead>& reads,
                                          const PredictRead& predict);

EvaluationCounts totalOf(const std::vector<EvaluationCounts>& parts);

// Places in a list of reads, ascending.
using ReadPlaces = std::vector<std::uint32_t>;

ReadPlaces allPlaces(const std::vector<LabelledRead>& reads);

// The places of the reads of each class, [readClassIndex].
std::vector<ReadPlaces> placesByClass(const std::vector<LabelledRead>& reads);

// Sums over those reads of each transcript that are in `places`, in the order in which the
// transcripts first occur there.
std::vector<EvaluationCounts> totalsByTranscript(const std::vector<LabelledRead>& reads,
                                                 const std::vector<ReadEvaluation>& evaluations,
                                                 const ReadPlaces& places);

}  // namespace velto
