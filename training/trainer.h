// A trainer of a decoder: transcripts in, files of a model directory out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "simulation/transcript.h"
#include "velto/velto.h"

namespace velto {

// The transcripts do not suffice; the message names what is lacking and the counts.
class TooLittleData : public Error {
  using Error::Error;
};

// Fewer transcripts of either kind are too little for any decoder: votes of 10 and 20 zebrafish
// mRNAs told windows of zebrafish far worse than those of the human model, votes of 50 about as
// well.
constexpr std::size_t kLeastTranscripts = 50;

// What every trainer is given. Trains with all threads of the calling arena; the result does not
// depend on their number.
struct TrainingJob {
  const std::vector<Transcript>& coding;
  const std::vector<Transcript>& noncoding;
  std::uint64_t seed = 1;
  std::function<void(const std::string&)> progress = nullptr;  // a line of what was done; may be
                                                               // called by any thread, one at a
                                                               // time; null: not wanted
  bool quick = false;  // a first try: less work, somewhat less accuracy
};

// A file of a model directory.
struct ModelFile {
  std::string path;  // in the directory, for example "paramater/paramL0G0-ex0.txt"
  std::string bytes;
};

// What a trainer makes.
struct TrainedDecoder {
  std::string name;
  std::vector<ModelFile> files;
  std::string card;                  // JSON object; its members join those of the model card
  std::vector<std::string> remarks;  // lines for the user: where data were scarce
};

// Throws TooLittleData for fewer than kLeastTranscripts coding or non-coding transcripts.
void requireTranscripts(const TrainingJob& job);

struct Trainer {
  const char* decoder;                              // name, as velto scan --decoder has it
  bool needsStandardStops;                          // takes those of the standard code for stops
  void (*check)(const TrainingJob& job);            // throws TooLittleData, without any work
  TrainedDecoder (*train)(const TrainingJob& job);  // throws TooLittleData
};

// Every trainer there is, in the order in which they run: the only place that names them.
std::span<const Trainer> trainers();

}  // namespace velto
