#include "simulation/read_simulator.h"

#include <algorithm>

#include "core/base_code.h"
#include "simulation/read_qualities.h"

namespace velto {
namespace {

// Builds a read template base by template base and keeps the truth up to date.
class ReadBuilder {
 public:
  ReadBuilder(const Transcript& transcript, Fragment fragment) : transcript_(transcript) {
    read_.source = &transcript;
    read_.fragment = fragment;
    const auto room = static_cast<std::size_t>(fragment.length + fragment.length / 32 + 8);
    read_.bases.reserve(room);
    read_.frame.reserve(room);
  }

  // Copies the template bases [begin, end) without error.
  void copy(int begin, int end) {
    for (int t = begin; t < end; ++t) keep(t, transcript_.bases[static_cast<std::size_t>(t)]);
  }

  // Appends template base t, read as `base`.
  void keep(int t, short base) {
    const int position = read_.length();
    read_.bases.push_back(base);
    if (t < transcript_.cdsStart || t > transcript_.cdsStop || !transcript_.isCoding()) {
      read_.frame.push_back(-1);
      return;
    }
    const int phase = (t - transcript_.cdsStart) % 3;
    read_.frame.push_back(static_cast<signed char>((position + 3 - phase) % 3));
    if (read_.start < 0) read_.start = position;
    read_.stop = position;
    placePending(position);
    noteEnds(t, position);
  }

  // Appends a base that the template does not have.
  void insert(short base) {
    if (read_.isCoding()) pending_.push_back({Frameshift::Kind::kInsertion, read_.length()});
    read_.bases.push_back(base);
    read_.frame.push_back(-1);
  }

  void drop() {
    if (read_.isCoding()) pending_.push_back({Frameshift::Kind::kDeletion, -1});
  }

  SimulatedRead finish() { return std::move(read_); }

 private:
  // A shift is known to lie inside the coding region once a coding base follows it; a gap is then
  // at the first base behind it, be that an inserted one.
  void placePending(int position) {
    if (pending_.empty()) return;
    int next = position;
    for (auto shift = pending_.rbegin(); shift != pending_.rend(); ++shift) {
      if (shift->kind == Frameshift::Kind::kInsertion) {
        next = shift->position;
      } else {
        shift->position = next;
      }
    }
    read_.shifts.insert(read_.shifts.end(), pending_.begin(), pending_.end());
    pending_.clear();
  }

  // The base before and the one before that are those of the same codon when three template bases
  // in a row were appended in a row.
  void noteEnds(int t, int position) {
    run_ = t == lastTemplate_ + 1 && position == lastPosition_ + 1 ? run_ + 1 : 1;
    lastTemplate_ = t;
    lastPosition_ = position;
    if (run_ < 3) return;
    if (t == transcript_.cdsStart + 2) read_.startInside = true;
    if (t == transcript_.cdsStop) read_.stopInside = true;
  }

  const Transcript& transcript_;
  SimulatedRead read_;
  std::vector<Frameshift> pending_;  // shifts since the last coding base
  int lastTemplate_ = -2;            // last coding template base appended, and where
  int lastPosition_ = -2;
  int run_ = 0;  // coding bases appended in a row, on both sides
};

}  // namespace

SimulatedRead applyErrors(const Transcript& transcript, Fragment fragment,
                          const std::vector<TemplateError>& errors) {
  ReadBuilder builder(transcript, fragment);
  int next = fragment.start;  // first template base not yet handled
  for (const TemplateError& error : errors) {
    const int t = fragment.start + error.offset;
    builder.copy(next, t);
    next = error.kind == TemplateError::kInsertion ? t : t + 1;
    switch (error.kind) {
      case TemplateError::kSubstitution:
      case TemplateError::kUnknown:
        builder.keep(t, error.kind == TemplateError::kUnknown ? kUnknownBase : error.base);
        break;
      case TemplateError::kInsertion:
        builder.insert(error.base);
        break;
      case TemplateError::kDeletion:
        builder.drop();
        break;
    }
  }
  builder.copy(next, fragment.start + fragment.length);
  return builder.finish();
}

SimulatedRead simulateRead(const Transcript& transcript, Fragment fragment, const ErrorModel& model,
                           Random& random) {
  const std::vector<TemplateError> errors = drawErrors(transcript, fragment, model, random);
  SimulatedRead read = applyErrors(transcript, fragment, errors);
  if (model.quality.mean > 0) {
    read.phred = drawQualities(read.length(), errors, model.quality, random);
  }
  return read;
}

Fragment sampleFragment(const Transcript& transcript, FragmentLengths lengths, Random& random) {
  const int span = lengths.longest - lengths.shortest + 1;
  const int drawn =
      lengths.shortest + static_cast<int>(random.below(static_cast<std::uint32_t>(span)));
  const int length = std::min(drawn, transcript.length());
  const auto places = static_cast<std::uint32_t>(transcript.length() - length + 1);
  return {static_cast<int>(random.below(places)), length};
}

}  // namespace velto
