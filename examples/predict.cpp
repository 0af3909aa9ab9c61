// Predicts one read: predict MODEL_DIRECTORY BASES
#include <velto/velto.h>

#include <iostream>

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: predict MODEL_DIRECTORY BASES\n";
    return 2;
  }
  try {
    const velto::Predictor predictor(argv[1]);
    velto::Workspace workspace;
    const velto::Prediction found = predictor.predict(argv[2], workspace);
    if (found.status != velto::Prediction::Status::kCoding) {
      std::cout << "no coding region\n";
      return 0;
    }
    std::cout << "coding from " << found.start + 1 << " to " << found.stop + 1 << ", score "
              << found.score << "\n";
    for (const velto::Frameshift& shift : found.frameshifts) {
      const bool inserted = shift.kind == velto::Frameshift::Kind::kInsertion;
      std::cout << (inserted ? "inserted base at " : "lost base before ") << shift.position + 1
                << "\n";
    }
  } catch (const velto::ModelError& error) {
    std::cerr << error.what() << "\n";
    return 1;
  }
}
