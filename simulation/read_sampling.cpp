#include "simulation/read_sampling.h"

namespace velto {

std::uint64_t readCount(const ReadSampling& sampling, std::size_t transcripts) {
  return sampling.reads ? *sampling.reads : sampling.perTranscript * transcripts;
}

SimulatedRead sampleRead(const ReadSampling& sampling, const std::vector<Transcript>& transcripts,
                         std::uint64_t index) {
  Random random = Random::split(sampling.seed, index);
  const std::size_t chosen = sampling.reads
                                 ? random.below(static_cast<std::uint32_t>(transcripts.size()))
                                 : index / sampling.perTranscript;
  const Transcript& transcript = transcripts[chosen];
  const Fragment fragment = sampling.lengths ? sampleFragment(transcript, *sampling.lengths, random)
                                             : wholeTranscript(transcript);
  SimulatedRead read = simulateRead(transcript, fragment, sampling.errors, random);
  read.reversed = sampling.bothStrands && random.below(2) == 1;
  return read;
}

std::string sampledReadName(std::uint64_t index) { return "r" + std::to_string(index + 1); }

}  // namespace velto
