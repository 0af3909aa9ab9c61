// The compiled part of the Python package: predictors, and predictions that lend out their memory.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <velto/velto.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace py = pybind11;

namespace {

using velto::Prediction;
using velto::Predictor;
using velto::Strand;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

// A read that owns its letters, so that it can be predicted while Python goes on.
struct OwnedRead {
  std::string bases;
  std::vector<std::uint8_t> qualities;  // Phred value per base; empty: not known
};

// A prediction and what is read off it. Constant once Python has it.
struct Result {
  Prediction prediction;
  std::string letters;  // as predicted, along the prediction's strand
  velto::CodingSequence coding;
};

using SharedResult = std::shared_ptr<Result>;

struct Options {
  velto::PredictOptions predict;
  int geneticCode;
};

// ---- Arguments

Strand strandNamed(const std::string& name) {
  if (name == "both") return Strand::kBoth;
  if (name == "plus") return Strand::kPlus;
  if (name == "minus") return Strand::kMinus;
  throw std::invalid_argument("the strand is one of 'plus', 'minus' and 'both', not '" + name +
                              "'");
}

Options optionsOf(const std::string& strand, int geneticCode, bool scores,
                  std::optional<double> minProbability) {
  if (minProbability && !(*minProbability >= 0.0 && *minProbability <= 1.0)) {
    throw std::invalid_argument("min_probability is from 0 to 1");
  }
  Options options{{}, geneticCode};
  options.predict.strand = strandNamed(strand);
  options.predict.wantScores = scores;
  options.predict.minProbability = minProbability.value_or(kNone);
  return options;
}

// Pairs of bases and qualities, both bytes.
std::vector<OwnedRead> readsOf(const py::list& pairs) {
  std::vector<OwnedRead> reads;
  for (const py::handle pair : pairs) {
    const auto [bases, qualities] = pair.cast<std::pair<std::string, std::string>>();
    reads.push_back({bases, {qualities.begin(), qualities.end()}});
  }
  return reads;
}

std::vector<velto::Read> viewsOf(const std::vector<OwnedRead>& reads) {
  std::vector<velto::Read> views;
  for (const OwnedRead& read : reads) views.push_back({read.bases, read.qualities});
  return views;
}

// ---- Predictions

SharedResult resultOf(Prediction prediction, const OwnedRead& read, const Options& options) {
  Result result;
  result.letters = velto::predictedLetters(read.bases, prediction.strand, options.predict.letters);
  result.coding = velto::codingSequence(prediction, result.letters, options.geneticCode);
  result.prediction = std::move(prediction);
  return std::make_shared<Result>(std::move(result));
}

std::vector<SharedResult> predictAll(const Predictor& predictor, const py::list& pairs,
                                     const Options& options) {
  const std::vector<OwnedRead> reads = readsOf(pairs);
  const py::gil_scoped_release otherThreadsRun;
  thread_local velto::Workspace workspace;
  std::vector<Prediction> predictions =
      predictor.predictAll(viewsOf(reads), workspace, options.predict);
  std::vector<SharedResult> results;
  for (std::size_t i = 0; i < reads.size(); ++i) {
    results.push_back(resultOf(std::move(predictions[i]), reads[i], options));
  }
  return results;
}

Predictor calibrated(const Predictor& predictor, const py::list& pairs, const Options& options) {
  const std::vector<OwnedRead> reads = readsOf(pairs);
  const py::gil_scoped_release otherThreadsRun;
  return predictor.calibrated(predictor.learn(viewsOf(reads), options.predict));
}

// ---- Attributes

// Memory of a result, which lives as long as it is looked at.
template <typename Value>
struct Column {
  SharedResult owner;
  const std::vector<Value>* values;
};

template <typename Value>
void defineColumn(py::module_& module, const char* name) {
  py::class_<Column<Value>>(module, name, py::buffer_protocol())
      .def_buffer([](const Column<Value>& column) {
        return py::buffer_info(column.values->data(),
                               static_cast<py::ssize_t>(column.values->size()));
      });
}

template <typename Value>
py::memoryview viewOf(const SharedResult& owner, const std::vector<Value>& values) {
  return py::memoryview(py::cast(Column<Value>{owner, &values}));
}

std::optional<double> unlessNan(double value) {
  return std::isnan(value) ? std::nullopt : std::optional(value);
}

std::optional<int> unlessNegative(int position) {
  return position < 0 ? std::nullopt : std::optional(position);
}

py::object scoresOf(const SharedResult& result) {
  const auto& scores = result->prediction.scores;
  if (scores[0].empty()) return py::none();
  return py::make_tuple(viewOf(result, scores[0]), viewOf(result, scores[1]),
                        viewOf(result, scores[2]));
}

void defineFrameshift(py::module_& module) {
  py::class_<velto::Frameshift>(module, "Frameshift",
                                "A base too many, or a base lost just before a position.")
      .def_property_readonly(
          "kind",
          [](const velto::Frameshift& shift) {
            return shift.kind == velto::Frameshift::Kind::kInsertion ? "insertion" : "deletion";
          },
          "'insertion' or 'deletion'.")
      .def_readonly("position", &velto::Frameshift::position,
                    "Of the inserted base, or of the base behind the lost one: 0-based on the\n"
                    "predicted strand.")
      .def_property_readonly(
          "confidence", [](const velto::Frameshift& shift) { return unlessNan(shift.confidence); },
          "0 to 1; None where the decoder gives none.");
}

char symbolOf(Strand strand) { return strand == Strand::kMinus ? '-' : '+'; }

std::string textOf(const Result& result) {
  const Prediction& p = result.prediction;
  std::string text = "<velto.Prediction " + std::string(velto::nameOf(p.status));
  if (p.isCoding()) {
    text += " start=" + std::to_string(p.start) + " stop=" + std::to_string(p.stop) +
            " strand=" + symbolOf(p.strand) +
            " frameshifts=" + std::to_string(p.frameshifts.size());
  }
  return text + ">";
}

// Attributes of the read and of its prediction as a whole.
void defineSummary(py::class_<Result, SharedResult>& type) {
  type.def_property_readonly(
          "status", [](const Result& r) { return velto::nameOf(r.prediction.status); },
          "'coding', 'noncoding', 'short' (1 to 29 bases) or 'empty'; the last two are not "
          "predicted.")
      .def_property_readonly(
          "is_coding", [](const Result& r) { return r.prediction.isCoding(); },
          "True if a coding region was found.")
      .def_property_readonly(
          "length", [](const Result& r) { return r.prediction.length; }, "Bases of the read.")
      .def_property_readonly(
          "gc_percent", [](const Result& r) { return r.prediction.gcPercent; },
          "G and C in percent of the bases, 0 to 100.")
      .def_property_readonly(
          "strand", [](const Result& r) { return symbolOf(r.prediction.strand); },
          "'+' or '-'. All positions count along this strand.")
      .def_property_readonly(
          "decoder", [](const Result& r) { return r.prediction.decoder; },
          "Name of the decoder; empty if the read was not predicted.")
      .def_property_readonly(
          "model", [](const Result& r) { return r.prediction.model; },
          "Which of the decoder's models served; empty if it has only one.")
      .def_property_readonly(
          "score", [](const Result& r) { return r.prediction.score; },
          "The decoder's own score, more is better; 0.0 if the read was not predicted.")
      .def_property_readonly(
          "probability", [](const Result& r) { return unlessNan(r.prediction.probability); },
          "That the read codes, 0 to 1; None where the decoder gives none.");
}

// Attributes of the coding region.
void defineRegion(py::class_<Result, SharedResult>& type) {
  type.def_property_readonly(
          "start", [](const Result& r) { return unlessNegative(r.prediction.start); },
          "First base of the coding region, 0-based on the strand; None without a region.")
      .def_property_readonly(
          "stop", [](const Result& r) { return unlessNegative(r.prediction.stop); },
          "Last base of the coding region, 0-based on the strand and itself in the region; up to\n"
          "two bases beyond the read's end; None without a region.")
      .def_property_readonly(
          "frameshifts", [](const Result& r) { return r.prediction.frameshifts; },
          "List of Frameshift, by position.")
      .def_property_readonly(
          "letters", [](const Result& r) { return r.letters; },
          "The read along the strand: A, C, G, T, and N for unknown bases.")
      .def_property_readonly(
          "coding_sequence", [](const Result& r) { return r.coding.bases; },
          "Whole codons: inserted bases left out, an N for each lost base; empty without a region.")
      .def_property_readonly(
          "protein", [](const Result& r) { return r.coding.protein; },
          "One letter a codon of the coding sequence: '*' for a stop codon, X for a codon with N.")
      .def_property_readonly(
          "coding_type",
          [](const Result& r) {
            return r.prediction.isCoding() ? std::optional(velto::nameOf(r.coding.type))
                                           : std::nullopt;
          },
          "'complete', 'interrupted', '5prime_partial' (no start codon), '3prime_partial' (no "
          "stop\n"
          "codon) or 'internal'; None without a region.")
      .def_property_readonly(
          "inner_stops", [](const Result& r) { return r.coding.innerStops; },
          "Stop codons but the one at the end of the coding sequence.");
}

void definePrediction(py::module_& module) {
  py::class_<Result, SharedResult> type(module, "Prediction", "What was predicted of one read.");
  defineSummary(type);
  defineRegion(type);
  type.def_property_readonly(
          "frames", [](const SharedResult& r) { return viewOf(r, r->prediction.frame); },
          "Read-only memory of int8, one value a base of the strand: reading frame 0 to 2 (codons\n"
          "of frame f begin at bases p with p mod 3 = f), -1 off the coding region and at "
          "inserted\n"
          "bases. Empty without a region. NumPy takes it without a copy.")
      .def_property_readonly(
          "scores", scoresOf,
          "If asked for, three read-only memories of float64, [frame][base]: how well the base\n"
          "fits a codon of that frame, a vote (above 0: coding; -10: no window) or a probability,\n"
          "by decoder. Otherwise None. NumPy takes them without a copy.")
      .def("__repr__", textOf);
}

void definePredictor(py::module_& module) {
  py::class_<Options>(module, "Options")
      .def(py::init(&optionsOf), py::arg("strand"), py::arg("code"), py::arg("scores"),
           py::arg("min_probability"));
  py::class_<Predictor>(module, "Predictor")
      .def(py::init<const std::string&, const std::string&>(), py::arg("folder"),
           py::arg("decoder"), py::call_guard<py::gil_scoped_release>())
      .def_property_readonly("decoder", &Predictor::decoder)
      .def_property_readonly("uses_calibration", &Predictor::usesCalibration)
      .def("predict_all", &predictAll, py::arg("reads"), py::arg("options"))
      .def("calibrated", &calibrated, py::arg("reads"), py::arg("options"));
}

}  // namespace

PYBIND11_MODULE(_velto, module) {
  const auto& error = py::register_exception<velto::Error>(module, "Error", PyExc_RuntimeError);
  py::register_exception<velto::ModelError>(module, "ModelError", error);
  defineColumn<std::int8_t>(module, "Frames");
  defineColumn<double>(module, "Scores");
  defineFrameshift(module);
  definePrediction(module);
  definePredictor(module);
  module.def(
      "decoders", [](const std::string& folder) { return velto::Model(folder).decoders(); },
      py::arg("folder"));
}
