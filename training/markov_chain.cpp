#include "training/markov_chain.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "decoder/tester.h"

namespace velto {
namespace {

// Transitions [4 x previous state + current state] and their number.
struct Counts {
  double of[16] = {};
  int total = 0;

  void add(int previousCode, int currentCode) {
    const int p = decodingState(previousCode);
    const int c = decodingState(currentCode);
    if (p < 0 || c < 0) return;
    ++of[4 * p + c];
    ++total;
  }
};

int classAt(const layout& lay, int frame, size_t step) {
  const std::vector<int>& classes = lay.cls[frame];
  return step < classes.size() ? classes[step] : kNoWindow;
}

void countPath(const layout& lay, Counts& counts) {
  bool entered = false;
  int previous = kPathStart;
  for (size_t j = 0; j < lay.rfm.size(); ++j) {
    const int frame = lay.rfm[j];
    if (frame < 0 || frame > 2) continue;
    if (entered) {
      const int current = classAt(lay, frame, j);
      counts.add(previous, current);
      previous = current;
    }
    entered = true;
  }
}

void countAllSteps(const layout& lay, Counts& counts) {
  for (size_t j = 1; j < lay.rfm.size(); ++j) {
    for (int before = 0; before < 3; ++before) {
      for (int now = 0; now < 3; ++now)
        counts.add(classAt(lay, before, j - 1), classAt(lay, now, j));
    }
  }
}

double logRatio(double onPath, double offPath) {
  constexpr double kLeastShare = 1e-13;  // stands for a share of zero
  if (onPath == 0.0) return kUnseenTransition;
  return std::log10(onPath) - std::log10(offPath == 0.0 ? kLeastShare : offPath);
}

}  // namespace

TransitionRatios transitionRatios(const std::vector<layout>& layouts) {
  Counts path;
  Counts all;
  for (const layout& lay : layouts) {
    countPath(lay, path);
    countAllSteps(lay, all);
  }
  const int offPathTotal = all.total - path.total;
  TransitionRatios ratios;
  for (int k = 0; k < 16; ++k) {
    const double offPath = all.of[k] != 0.0 ? all.of[k] - path.of[k] : 0.0;
    ratios.value[k] = logRatio(path.of[k] / path.total, offPath / offPathTotal);
  }
  return ratios;
}

void writeTransitionRatios(std::ostream& out, const TransitionRatios& ratios) {
  for (int previous = 0; previous < 4; ++previous) {
    for (int current = 0; current < 4; ++current) {
      out << ratios.value[4 * previous + current] << ',';
    }
    out << '\n';
  }
}

void Test::MakeMalkovChain(std::string path) {
  std::ofstream out(path, std::ios::trunc);
  if (!out) {
    std::cerr << "can't open " << path << "\n";
    std::exit(1);
  }
  const TransitionRatios ratios = transitionRatios(*layoutList);
  for (int previous = 0; previous < 4; ++previous) {
    for (int current = 0; current < 4; ++current) {
      malkovChain[4 * current + previous] = ratios.value[4 * previous + current];
    }
  }
  writeTransitionRatios(out, ratios);
}

}  // namespace velto
