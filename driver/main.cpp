// The one-read program VELTO.exe: options, one prediction, reports in a fixed order.
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <new>

#include "driver/web_predict.h"
#include "model/model_tables.h"

namespace {

struct Options {
  char* inputFile;
  char* paramDir;
  int width = 60;
  char* htmlFile = nullptr;   // null: no page wanted
  char* scoreFile = nullptr;  // null: no score file wanted
};

// The spelling of the text is fixed.
[[noreturn]] void printHelpAndExit() {
  std::cout << "Usage: VELTO.exe [OPTION]\n\n"
               "OPTIONS:\n"
               "\t--help: Show this help.\n"
               "\t-i: Input filename (default name is sample.txt.)\n"
               "\t-d: Paramater directory (default directory is ./param-human)\n"
               "\t-w: Display width (default width is 60 bases.)\n"
               "\t-h: Output frame layout to a html file.\n"
               "\t-s: Output score of each base to a file.\n"
               "\n----\n"
               "ex) VELTO.exe -w 70 -h out.html -s score.cvs -i inputFasta.txt\n\n"
               "REFERENCE:\n"
               "Freund Y, Schapire RE. A decision-theoretic generalization of on-line learning and "
               "an application to boosting. Journal of Computer and System Sciences 55, 119-139 "
               "(1997).\n";
  std::exit(1);
}

// Only the second character of an option counts; anything that is no option is skipped silently.
void parseOptions(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    if (argv[i][0] != '-') continue;
    const char letter = argv[i][1];
    if (letter == '\0' || std::strchr("dhisw", letter) == nullptr) continue;
    if (++i == argc) printHelpAndExit();
    char* value = argv[i];
    switch (letter) {
      case 'd':
        options.paramDir = value;
        break;
      case 'h':
        options.htmlFile = value;
        break;
      case 'i':
        options.inputFile = value;
        break;
      case 's':
        options.scoreFile = value;
        break;
      default:
        options.width = static_cast<int>(std::strtol(value, nullptr, 10));
    }
  }
}

void run(int argc, char** argv) {
  static char defaultInput[] = "sample.txt";
  static char defaultParamDir[] = "./param-human";
  velto::GCID = 0;
  velto::LENGTHID = 0;
  velto::READ_ROUND = 0;
  velto::WebPredict predictor;
  Options options{defaultInput, defaultParamDir};
  parseOptions(argc, argv, options);
  predictor.inputFile = options.inputFile;
  predictor.paramDir = options.paramDir;
  predictor.GetResult();
  predictor.OutNormLayout(options.width);
  if (options.htmlFile != nullptr) predictor.OutHtmlLayout(options.width, options.htmlFile);
  if (options.scoreFile != nullptr) predictor.OutValLayout(options.width, options.scoreFile);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::strcmp(argv[1], "--help") == 0) printHelpAndExit();
  try {
    run(argc, argv);
  } catch (const std::bad_alloc&) {
    std::cout << "exit\n";
    return 1;
  }
  std::cout.flush();
  if (std::cout.good()) return 0;
  std::cerr << "standard output: cannot write\n";
  return 1;
}
