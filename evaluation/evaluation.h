// The evaluation of a model: what is counted of every read, summed up over sets of reads.
#pragma once

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

// Calls a read; used by several threads at once.
using CallRead = std::function<CalledRead(const LabelledRead& read)>;

// Evaluates every read; the result, in the order of the reads, is the same for any number of
// threads. 0 threads: as many as there are processors.
std::vector<ReadEvaluation> evaluateReads(const std::vector<LabelledRead>& reads,
                                          const CallRead& predict, int threads);

EvaluationCounts totalOf(const std::vector<ReadEvaluation>& evaluations);

// Sums over the reads of each class, [readClassIndex].
std::vector<EvaluationCounts> totalsByClass(const std::vector<LabelledRead>& reads,
                                            const std::vector<ReadEvaluation>& evaluations);

// Sums over the reads of each transcript, in the order in which the transcripts first occur.
std::vector<EvaluationCounts> totalsByTranscript(const std::vector<LabelledRead>& reads,
                                                 const std::vector<ReadEvaluation>& evaluations);

}  // namespace velto
