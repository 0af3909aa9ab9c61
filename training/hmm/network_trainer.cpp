#include "training/hmm/network_trainer.h"

#include <tbb/parallel_for.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "training/hmm/network_gradient.h"

namespace velto {
namespace {

// Streams of random numbers of one seed.
enum Stream : std::uint64_t { kReadStream = 1, kDropoutStream = 2, kStartStream = 3 };

std::uint64_t seedOf(std::uint64_t seed, Stream stream) {
  return Random::split(seed, stream).next();
}

// Roughly normal with standard deviation 1.
float drawNormal(Random& random) {
  double sum = -6.0;
  for (int k = 0; k < 12; ++k) sum += random.real();
  return static_cast<float>(sum);
}

Parameters firstParameters(const NetworkLayout& layout, std::uint64_t seed) {
  Random random(seedOf(seed, kStartStream));
  Parameters p(layout.size(), 0.0f);
  for (std::size_t i = 0; i < layout.bias(0); ++i) p[i] = 0.08f * drawNormal(random);
  for (std::size_t i = layout.bias(0); i < layout.pair(0); ++i) p[i] = 0.1f;
  for (std::size_t i = layout.pair(0); i < layout.output(0); ++i) p[i] = 0.05f * drawNormal(random);
  for (std::size_t i = layout.output(0); i < layout.outputBias(); ++i) {
    p[i] = 0.02f * drawNormal(random);
  }
  return p;
}

// Sum over some reads of a batch.
struct GradientPart {
  explicit GradientPart(const NetworkShape& shape) : worker(shape) {}
  NetworkGradient worker;
  Parameters gradient;
  double likelihood = 0.0;
  double bases = 0.0;
  std::vector<StateMask> masks;
  std::vector<float> dropout;
};

// Adam with decaying weights; keeps a running mean of the parameters, which generalises better than
// the last ones.
class Optimizer {
 public:
  Optimizer(const NetworkLayout& layout, Parameters first)
      : decayed_(layout.outputBias()),
        undecayedBegin_(layout.bias(0)),
        undecayedEnd_(layout.pair(0)),
        parameters_(std::move(first)),
        mean_(parameters_.size(), 0.0f),
        first_(parameters_.size(), 0.0f),
        second_(parameters_.size(), 0.0f) {}

  const Parameters& parameters() const { return parameters_; }

  // Moves up the gradient.
  void step(const Parameters& gradient, double rate, double decay) {
    firstPower_ *= kFirst;
    secondPower_ *= kSecond;
    meanPower_ *= kMean;
    const auto length = static_cast<float>(rate / (1.0 - firstPower_));
    const auto inverse = static_cast<float>(1.0 / (1.0 - secondPower_));
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
      const bool isDecayed = i < decayed_ && (i < undecayedBegin_ || i >= undecayedEnd_);
      const float shrink = isDecayed ? static_cast<float>(decay) : 0.0f;
      const float slope = gradient[i] - shrink * parameters_[i];
      first_[i] = kFirst * first_[i] + (1.0f - kFirst) * slope;
      second_[i] = kSecond * second_[i] + (1.0f - kSecond) * slope * slope;
      parameters_[i] += length * first_[i] / (std::sqrt(second_[i] * inverse) + kLeastScale);
      mean_[i] = kMean * mean_[i] + (1.0f - kMean) * parameters_[i];
    }
  }

  Parameters mean() const {
    Parameters mean = mean_;
    for (float& x : mean) x /= static_cast<float>(1.0 - meanPower_);
    return mean;
  }

 private:
  static constexpr float kFirst = 0.9f, kSecond = 0.999f, kMean = 0.998f;
  static constexpr float kLeastScale = 1e-3f;

  std::size_t decayed_;  // parameters before this one, but for the biases
  std::size_t undecayedBegin_, undecayedEnd_;
  Parameters parameters_, mean_, first_, second_;
  double firstPower_ = 1.0, secondPower_ = 1.0, meanPower_ = 1.0;
};

class Trainer {
 public:
  Trainer(const NetworkPlan& plan, const ReadDrawer& reads,
          const std::vector<HmmModel>& tablesOfFold, std::uint64_t seed)
      : plan_(plan), reads_(reads), tables_(tablesOfFold), seed_(seed), layout_(plan.shape) {
    for (int part = 0; part < kGradientParts; ++part) parts_.emplace_back(plan.shape);
  }

  Parameters train(const std::function<void(int, double)>& progress) {
    constexpr int kReportEvery = 200;
    Optimizer optimizer(layout_, firstParameters(layout_, seed_));
    double likelihood = 0.0, bases = 0.0;
    for (int batch = 0; batch < plan_.steps; ++batch) {
      sumBatch(batch, optimizer.parameters());
      for (const GradientPart& part : parts_) {
        likelihood += part.likelihood;
        bases += part.bases;
      }
      optimizer.step(total_, rateAt(batch), plan_.decay);
      if ((batch + 1) % kReportEvery == 0 || batch + 1 == plan_.steps) {
        if (progress) progress(batch + 1, 1000.0 * likelihood / bases);
        likelihood = bases = 0.0;
      }
    }
    return optimizer.mean();
  }

 private:
  double rateAt(int batch) const {
    return plan_.learningRate * (1.0 - 0.9 * batch / std::max(1, plan_.steps - 1));
  }

  void sumBatch(int batch, const Parameters& parameters) {
    tbb::parallel_for(0, kGradientParts, [&](int part) { sumPart(batch, part, parameters); });
    double bases = 0.0;
    for (const GradientPart& part : parts_) bases += part.bases;
    const auto perThousand = static_cast<float>(1000.0 / bases);
    total_.assign(layout_.size(), 0.0f);
    for (const GradientPart& part : parts_) {
      for (std::size_t i = 0; i < total_.size(); ++i) total_[i] += part.gradient[i];
    }
    for (float& x : total_) x *= perThousand;
  }

  void sumPart(int batch, int index, const Parameters& parameters) {
    GradientPart& part = parts_[static_cast<std::size_t>(index)];
    part.gradient.assign(layout_.size(), 0.0f);
    part.likelihood = part.bases = 0.0;
    const int reads = plan_.readsPerBatch / kGradientParts;
    for (int k = 0; k < reads; ++k) {
      const auto number =
          static_cast<std::uint64_t>(batch) * static_cast<std::uint64_t>(plan_.readsPerBatch) +
          static_cast<std::uint64_t>(index * reads + k);
      addRead(number, parameters, part);
    }
  }

  void addRead(std::uint64_t number, const Parameters& parameters, GradientPart& part) {
    const TrainingRead drawn = reads_.draw(seedOf(seed_, kReadStream), number);
    trueStates(drawn, part.masks);
    drawDropout(number, part.dropout);
    const LabelledLattice labelled{
        {drawn.read.bases, {}}, part.masks, drawn.rates, tables_[drawn.fold], part.dropout};
    part.likelihood += part.worker.add(labelled, parameters, &part.gradient);
    part.bases += static_cast<double>(drawn.read.length());
  }

  void drawDropout(std::uint64_t number, std::vector<float>& dropout) const {
    Random random = Random::split(seedOf(seed_, kDropoutStream), number);
    const auto kept = static_cast<float>(1.0 / (1.0 - plan_.dropout));
    dropout.resize(layout_.units());
    for (float& x : dropout) x = random.real() < plan_.dropout ? 0.0f : kept;
  }

  const NetworkPlan& plan_;
  const ReadDrawer& reads_;
  const std::vector<HmmModel>& tables_;
  const std::uint64_t seed_;
  const NetworkLayout layout_;
  std::vector<GradientPart> parts_;
  Parameters total_;
};

}  // namespace

Parameters trainNetwork(const NetworkPlan& plan, const ReadDrawer& reads,
                        const std::vector<HmmModel>& tablesOfFold, std::uint64_t seed,
                        const std::function<void(int, double)>& progress) {
  return Trainer(plan, reads, tablesOfFold, seed).train(progress);
}

double judgeNetwork(const NetworkShape& shape, const Parameters& parameters,
                    const ReadDrawer& reads, const std::vector<HmmModel>& tablesOfFold,
                    std::uint64_t seed, int count) {
  NetworkGradient worker(shape);
  const std::vector<float> dropout(static_cast<std::size_t>(shape.units), 1.0f);
  std::vector<StateMask> masks;
  double likelihood = 0.0, bases = 0.0;
  for (int k = 0; k < count; ++k) {
    const TrainingRead drawn = reads.draw(seedOf(seed, kReadStream), static_cast<std::uint64_t>(k));
    trueStates(drawn, masks);
    const LabelledLattice labelled{
        {drawn.read.bases, {}}, masks, drawn.rates, tablesOfFold[drawn.fold], dropout};
    likelihood += worker.add(labelled, parameters, nullptr);
    bases += static_cast<double>(drawn.read.length());
  }
  return 1000.0 * likelihood / bases;
}

}  // namespace velto
