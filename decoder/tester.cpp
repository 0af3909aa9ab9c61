#include "decoder/tester.h"

#include "decoder/shift_placement.h"
#include "model/sliding_engine.h"
#include "model/window_vote.h"

namespace velto {

bool errComp(err a, err b) { return a.pos < b.pos; }

Test::Test()
    : smplList(new std::vector<smplData>),
      layoutList(new std::vector<layout>),
      seqList(new std::vector<std::vector<short>>),
      endStep(0) {}

Test::~Test() {
  delete smplList;
  delete layoutList;
  delete seqList;
}

int Test::CHKSmpl(const smplTestData& sample, double& score) {
  score = voteSum(processModel, sample);
  return windowClass(score);
}

int Test::CHKSmpl(const smplTestData& sample) { return windowClass(voteSum(processModel, sample)); }

int Test::CHKSmpl(const smplData& sample, double& score) {
  score = voteSum(processModel, sample);
  return windowClass(score);
}

void Test::MakeDPMatrix(dpNode* nodes, layout& lay) {
  fillLeadingClasses(lay, WINDOW_WIDTH);
  fillFramePaths(malkovChain, lay, nodes);
}

double Test::TraceBack(dpNode* nodes, int n, std::vector<int>& path) {
  const TracedPath traced = traceFramePath(nodes, n, path);
  endStep = traced.endStep;
  return traced.score;
}

void Test::FocusErrPlace(short* seq, int len, std::vector<int>& path) {
  SlidingEngine votes(processModelView(), seq, len);
  placeShifts(votes, WINDOW_WIDTH, endStep, path);
}

char Test::ConvertLayout(int code) { return layoutSymbol(code); }

int Test::ChkState(int code) { return decodingState(code); }

}  // namespace velto
