// The model files of the trained votes, and what the model card says of them.
#pragma once

#include "training/frames/vote_trainer.h"

namespace velto {

// Parameter file and matrix file of each class; as remarks the classes that borrowed reads.
TrainedDecoder voteFiles(const TrainedVotes& votes);

}  // namespace velto
