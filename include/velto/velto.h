// Predicts the protein-coding region and the frameshifts of error-prone cDNA reads.
//
//   const velto::Predictor predictor("param-human");  // once; any number of threads may use it
//   velto::Workspace workspace;                       // one per thread, kept for all its reads
//   const velto::Prediction found = predictor.predict("ACGTTAGC...", workspace);
//   if (found.status == velto::Prediction::Status::kCoding) use(found.start, found.stop);
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velto {

// ---- Errors

// What cannot be done, for a reason that lies outside the program. All errors of the library are of
// this class, but for memory that runs out and for arguments against a contract.
class Error : public std::runtime_error {
 public:
  explicit Error(const std::string& reason) : std::runtime_error(reason) {}

  // The message reads "FILE: record R, line L: REASON"; a record or line of 0 is left out.
  Error(const std::string& file, long record, long line, const std::string& reason);

  const std::string& file() const { return file_; }  // empty: no file
  long record() const { return record_; }            // 1-based; 0: none
  long line() const { return line_; }                // 1-based; 0: none

 private:
  std::string file_;
  long record_ = 0;
  long line_ = 0;
};

// A model that cannot be used.
class ModelError : public Error {
 public:
  using Error::Error;
};

// ---- What is asked

// Which letters are bases. Every other letter is an unknown base.
enum class Letters {
  kFolded,  // A, C, G, T in either case, U as T
  kExact,   // A, C, G, T in upper case only, as the one-read program has it
};

// The strand to predict on. A minus-strand prediction is that of the reverse complement.
enum class Strand {
  kPlus,
  kMinus,
  kBoth,  // the likelier strand; plus if both are alike
};

// One read; what it points to must outlive it.
struct Read {
  std::string_view bases;
  std::span<const std::uint8_t> qualities{};  // Phred value per base; empty: not known
};

struct PredictOptions {
  Letters letters = Letters::kFolded;
  Strand strand = Strand::kPlus;
  bool wantScores = false;  // fill Prediction::scores, which takes longer
  // Reads that code with a smaller probability are not called coding; NaN: the decoder's own
  // threshold. Of no effect on decoders that give no probability.
  double minProbability = std::numeric_limits<double>::quiet_NaN();
};

// Reads of fewer bases are not predicted.
constexpr int kLeastReadBases = 30;

// ---- What is answered

// An inserted base, or a base lost just before `position` (0-based on the predicted strand).
struct Frameshift {
  enum class Kind { kInsertion, kDeletion };
  Kind kind;
  int position;
  // 0 to 1; NaN where the decoder gives none.
  double confidence = std::numeric_limits<double>::quiet_NaN();
};

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
  Strand strand = Strand::kPlus;  // kPlus or kMinus

  // Of predicted reads; empty or NaN where the decoder has no such thing.
  std::string decoder;  // its name, for example "vote"
  std::string model;    // which of the decoder's models served, for example "96L0G1"
  double score = 0.0;   // the decoder's own, more is better
  double probability = std::numeric_limits<double>::quiet_NaN();  // that the read codes, on this
                                                                  // strand where both were asked
                                                                  // for; 0 to 1

  // Coding region, first to last base; -1 for none. It begins with a codon. The last codon of a
  // region that runs to the read's end may reach up to two bases beyond it.
  int start = -1;
  int stop = -1;
  std::vector<Frameshift> frameshifts;  // by position

  // [base] reading frame 0 to 2: codons of frame f begin at bases p with p mod 3 = f; -1 off the
  // coding region and at inserted bases. Empty unless the read is coding.
  std::vector<std::int8_t> frame;

  // [frame][base] how well the base fits a codon of that frame, if wanted: the vote of the window
  // centred on the codon (above 0 means coding, -10 that there is no window), or a probability. A
  // vote has the sign and the six digits of the one-read program's score, and is at most 1e-10 off.
  std::vector<double> scores[3];

  bool isCoding() const { return status == Status::kCoding; }
  bool isPredicted() const { return status == Status::kCoding || status == Status::kNoncoding; }
};

// "coding", "noncoding", "short" or "empty".
const char* nameOf(Prediction::Status status);

// Adjoining bases of the read, first to one behind the last, 0-based on the predicted strand.
struct CodingPart {
  int begin;
  int end;
  int phase;  // bases before the first base of the next codon, 0 to 2
};

// Whether the coding region has its start codon and its stop codon, and no stop codon between.
enum class CodingType {
  kComplete,     // both, none between
  kInterrupted,  // both, and inner stop codons
  kNoStart,      // whatever lies between in this and the next ones
  kNoStop,
  kNeither,
};

// "complete", "interrupted", "5prime_partial" (no start codon), "3prime_partial" (no stop codon) or
// "internal".
const char* nameOf(CodingType type);

// The coding region read in frame from its first to its last whole codon.
struct CodingSequence {
  std::string bases;               // inserted bases left out, an N for each lost base; whole codons
  std::vector<CodingPart> kept;    // all bases of the read that are in it
  std::vector<CodingPart> intact;  // the same without the codons that lost a base
  CodingType type = CodingType::kNeither;
  std::string protein;  // one letter for each codon: '*' for a stop codon, X for a codon with N
  int innerStops = 0;   // stop codons but the one at the end
};

// Errors per base of coding sequence, or factors of them.
struct BaseErrorRates {
  double insertion = 0.0;
  double deletion = 0.0;
  double substitution = 0.0;
};

// Bases with the quality values from behind those of the bin before it to `most`.
struct QualityBin {
  std::uint8_t most = 0;   // Phred
  BaseErrorRates factors;  // of the file's rates
};

// What is known of the file that reads come from. What is not known is empty.
struct Calibration {
  int reads = 0;  // of the sample it was learnt from; 0: not learnt
  std::optional<BaseErrorRates> errorRates;
  std::optional<double> codingShare;     // of the reads, 0 to 1
  std::optional<double> truncatedShare;  // of the coding reads: those that begin inside their
                                         // coding region, 0 to 1
  std::vector<QualityBin> qualities;     // ascending; empty: qualities tell nothing
};

// Calls task(i) once for each i below count, in any order and on any threads, and returns when all
// have returned.
using ParallelFor =
    std::function<void(std::size_t count, const std::function<void(std::size_t)>& task)>;

// ---- Models and predictors

class FileSource;

// The files of a model. Constant after construction; copies share them.
class Model {
 public:
  // The model of a folder; its files are read when a Predictor is made.
  explicit Model(const std::string& folder);

  // A model held in memory: the texts of its files by their names in the folder, for example
  // "paramater32/matrixL0G0-ex0.txt".
  explicit Model(std::map<std::string, std::string> texts);

  // Names of the decoders that the model has files for, the default one first; at least one.
  // Throws ModelError for a model without any, or with a damaged model.json.
  std::vector<std::string> decoders() const;

 private:
  friend class Predictor;
  std::shared_ptr<const FileSource> files_;
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

// A decoder of a model, ready to predict. Constant after construction; copies share the decoder.
// Any number of threads may use it at once, each with a workspace of its own.
class Predictor {
 public:
  // Loads a decoder of the model, by default the model's default one. Throws ModelError for files
  // that cannot be used and for a decoder that the model lacks.
  explicit Predictor(const Model& model, const std::string& decoder = "");
  explicit Predictor(const std::string& folder, const std::string& decoder = "");

  const std::string& decoder() const;  // its name

  // Predicts one read, whatever its length and letters. Throws Error for more than INT_MAX bases,
  // std::invalid_argument for qualities that are not as many as the bases.
  Prediction predict(std::string_view bases, Workspace& workspace,
                     const PredictOptions& options = {}) const;
  Prediction predict(std::string_view bases, std::span<const std::uint8_t> qualities,
                     Workspace& workspace, const PredictOptions& options = {}) const;

  // Predicts all reads, as predict does one by one; decoders may be faster at many at once.
  std::vector<Prediction> predictAll(std::span<const Read> reads, Workspace& workspace,
                                     const PredictOptions& options = {}) const;

  // True if the decoder makes use of what is known of a file.
  bool usesCalibration() const;

  // What the decoder learns about a file from a sample of its reads, of which those of fewer than
  // kLeastReadBases bases are passed over; what `known` holds is kept. Returns `known` if there is
  // nothing to learn. The strand of each read is that of the options. `parallel` may share the work
  // among threads, which changes nothing in the result; empty: this thread does all.
  Calibration learn(std::span<const Read> sample, const PredictOptions& options = {},
                    const Calibration& known = {}, const ParallelFor& parallel = {}) const;

  // The predictor for reads of a file of which this is known.
  Predictor calibrated(const Calibration& calibration) const;

 private:
  struct Impl;
  explicit Predictor(std::shared_ptr<const Impl> impl);
  std::shared_ptr<const Impl> impl_;
};

// The read as it is predicted: along `strand` (kPlus or kMinus), every letter A, C, G, T or, for an
// unknown base, N.
std::string predictedLetters(std::string_view bases, Strand strand, Letters letters);

// The coding sequence of a prediction by a genetic code of the NCBI list. `letters` are those of
// predictedLetters on the prediction's strand. A start codon of the code is M in the first place, a
// stop codon '*' in the last one, whatever they mean elsewhere. A prediction that is not coding has
// an empty sequence. Throws std::invalid_argument for a number that the list lacks.
CodingSequence codingSequence(const Prediction& prediction, std::string_view letters,
                              int geneticCode = 1);

}  // namespace velto
