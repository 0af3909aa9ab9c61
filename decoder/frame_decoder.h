// The decoder of the boosted vote: windows vote, the best path through the frames is called.
#pragma once

#include <array>
#include <memory>
#include <mutex>

#include "core/decoder.h"
#include "core/file_source.h"
#include "model/model_set.h"
#include "model/vote_tables.h"

namespace velto {

// Score of a call: that of the best path. The model is named by the read's class.
class FrameDecoder : public Decoder {
 public:
  // Loads the sixteen models. Throws ModelError.
  explicit FrameDecoder(const FileSource& files) : models_(files) {}

  std::unique_ptr<Scratch> scratch() const override;
  void decode(const ReadView& read, const Wishes& wishes, Scratch& scratch,
              Call& call) const override;

 private:
  // The tables of a class, made when its first read comes.
  const VoteTables& tablesOf(const ReadClass& readClass) const;

  struct LazyTables {
    std::once_flag once;
    std::unique_ptr<const VoteTables> tables;
  };

  ModelSet models_;
  mutable std::array<LazyTables, kReadClasses> tables_;  // [readClassIndex]
};

}  // namespace velto
