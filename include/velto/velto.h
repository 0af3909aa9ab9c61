// Predicts the protein-coding region and the frameshifts of error-prone cDNA reads.
//
//   const velto::Predictor predictor("param-human");  // once; any number of threads may use it
//   velto::Workspace workspace;                       // one per thread, kept for all its reads
//   const velto::Prediction found = predictor.predict("ACGTTAGC...", workspace);
//   if (found.status == velto::Prediction::Status::kCoding) use(found.start, found.stop);
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velto {

// A model directory that cannot be used; the message names the file, the line and the reason.
class ModelError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Which letters are bases. Every other letter is an unknown base.
enum class Letters {
  kFolded,  // A, C, G, T in either case, U as T
  kExact,   // A, C, G, T in upper case only, as the one-read program has it
};

// The strand to predict on. A minus-strand prediction is that of the reverse complement.
enum class Strand {
  kPlus,
  kMinus,
  kBoth,  // the strand with the better score; plus if both score alike
};

struct PredictOptions {
  Letters letters = Letters::kFolded;
  Strand strand = Strand::kPlus;
  bool wantScores = false;  // fill Prediction::scores, which takes several times longer
};

// An inserted base, or a base lost just before `position` (0-based on the predicted strand).
struct Frameshift {
  enum class Kind { kInsertion, kDeletion };
  Kind kind;
  int position;
};

// Reads of fewer bases are not predicted.
constexpr int kLeastReadBases = 30;

// The prediction of one read. All positions are 0-based on `strand`.
struct Prediction {
  enum class Status {
    kCoding,
    kNoncoding,  // predicted, but no coding region was found
    kShort,      // 1 to 29 bases: not predicted
    kEmpty,      // no bases: not predicted
  };

  Status status = Status::kEmpty;
  int length = 0;                 // bases
  double gcPercent = 0.0;         // 0 to 100; unknown bases count as bases
  std::string model;              // class of the read, for example "96L0G1"; empty: not predicted
  Strand strand = Strand::kPlus;  // kPlus or kMinus
  double score = 0.0;             // of the best path; above -9 a coding region was found

  // Coding region, first to last base; -1 for none. The last codon of a region that runs to the
  // read's end may reach up to two bases beyond it.
  int start = -1;
  int stop = -1;
  std::vector<Frameshift> frameshifts;  // by position

  // Reading frame (0 to 2) at each codon step, -1 off the coding region; step k of frame f is the
  // codon that begins at base 3k + f. Empty unless the read is coding.
  std::vector<int> frames;

  // Vote of the window centred on each codon step [frame][step], if wanted; above 0 means coding,
  // -10 that there is no window.
  std::vector<double> scores[3];
};

// Scratch memory for predictions: for one thread at a time, any predictor, any number of reads.
class Workspace {
 public:
  Workspace();
  ~Workspace();
  Workspace(Workspace&&) noexcept;
  Workspace& operator=(Workspace&&) noexcept;

 private:
  friend class Predictor;
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// All models of a model directory. Constant after construction; copies share the models.
class Predictor {
 public:
  // Loads the directory's sixteen models. Throws ModelError.
  explicit Predictor(const std::string& modelDirectory);

  // Predicts one read, whatever its length and letters. May be called by any number of threads at
  // once, each with a workspace of its own. Throws std::length_error for more than INT_MAX bases.
  Prediction predict(std::string_view bases, Workspace& workspace,
                     const PredictOptions& options = {}) const;

 private:
  struct Impl;
  std::shared_ptr<const Impl> impl_;
};

// The read as it is predicted: along `strand` (kPlus or kMinus), every letter A, C, G, T or, for an
// unknown base, N.
std::string predictedLetters(std::string_view bases, Strand strand, Letters letters);

}  // namespace velto
