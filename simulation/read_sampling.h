// A plan by which reads are simulated from transcripts, so that all commands draw the same reads.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "simulation/read_simulator.h"

namespace velto {

struct ReadSampling {
  ErrorModel errors;
  std::optional<FragmentLengths> lengths;  // nothing: whole transcripts
  std::optional<std::uint64_t> reads;      // each from a random transcript; nothing: perTranscript
  std::uint64_t perTranscript = 1;         // reads of each transcript in turn
  bool bothStrands = false;                // half of the reads are to be reversed
  std::uint64_t seed = 1;
};

// Number of reads the plan makes of so many transcripts.
std::uint64_t readCount(const ReadSampling& sampling, std::size_t transcripts);

// Read `index` (from 0) of the plan; it depends on its arguments alone. There must be a transcript.
// Pure; any thread may call it.
SimulatedRead sampleRead(const ReadSampling& sampling, const std::vector<Transcript>& transcripts,
                         std::uint64_t index);

// Name of read `index`, for example "r1" for 0.
std::string sampledReadName(std::uint64_t index);

}  // namespace velto
