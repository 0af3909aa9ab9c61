// The program as WebAssembly: functions that take a text and answer with one.
//
// A caller writes its text to requestRoom(bytes), calls a function, which returns 1, and reads
// answerBytes() at answerText(). After a 0 the answer is why it could not be done.
#include <emscripten/emscripten.h>

#include <exception>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "batch/file_calibration.h"
#include "draw/style.h"
#include "velto/velto.h"
#include "web/read_session.h"

namespace {

using nlohmann::json;

std::string request;
std::string answer;
std::unique_ptr<velto::Model> model;
std::string choices;  // JSON, of the session that is opened next
std::unique_ptr<velto::ReadSession> session;

template <typename Work>
int answered(Work work) {
  try {
    answer = work();
    return 1;
  } catch (const std::bad_alloc&) {
    answer = "the browser gives no more memory";
  } catch (const std::exception& error) {
    answer = error.what();
  }
  return 0;
}

velto::Strand strandNamed(const std::string& name) {
  if (name == "plus") return velto::Strand::kPlus;
  return name == "minus" ? velto::Strand::kMinus : velto::Strand::kBoth;
}

velto::SessionChoices choicesOf(const json& given) {
  velto::SessionChoices made;
  made.model = given.at("model");
  made.decoder = given.at("decoder");
  made.strand = strandNamed(given.at("strand"));
  made.geneticCode = given.at("code");
  const std::string calibration = given.at("calibration");
  if (!calibration.empty()) made.calibration = velto::parseCalibration(calibration, "the link");
  return made;
}

}  // namespace

extern "C" {

// Memory for the text of the next call, for so many bytes.
EMSCRIPTEN_KEEPALIVE char* requestRoom(std::size_t bytes) {
  request.resize(bytes);
  return request.data();
}
EMSCRIPTEN_KEEPALIVE const char* answerText() { return answer.data(); }
EMSCRIPTEN_KEEPALIVE std::size_t answerBytes() { return answer.size(); }

// Of an object with the texts of a model's files by name; answers with the list of its decoders.
EMSCRIPTEN_KEEPALIVE int loadModel() {
  return answered([] {
    session.reset();
    model = std::make_unique<velto::Model>(
        json::parse(request).get<std::map<std::string, std::string>>());
    return json(model->decoders()).dump();
  });
}

// Of an object with model, decoder, strand, code, calibration and the name of the input; to be
// followed by openReads().
EMSCRIPTEN_KEEPALIVE int choose() {
  return answered([] {
    choices = request;
    return "";
  });
}

// Of the bytes of the input; answers with how many reads there are.
EMSCRIPTEN_KEEPALIVE int openReads() {
  return answered([] {
    session.reset();
    const json given = json::parse(choices);
    std::string bytes;
    bytes.swap(request);
    session = std::make_unique<velto::ReadSession>(*model, choicesOf(given), given.at("name"),
                                                   std::move(bytes));
    return std::to_string(session->reads());
  });
}

EMSCRIPTEN_KEEPALIVE int learn() {
  return answered([] {
    session->learn();
    return "";
  });
}

// The functions of ReadSession.
EMSCRIPTEN_KEEPALIVE int predictNext() {
  return answered([] { return session->predictNext(); });
}
EMSCRIPTEN_KEEPALIVE int summary() {
  return answered([] { return session->summary(); });
}
EMSCRIPTEN_KEEPALIVE int drawing(std::size_t place) {
  return answered([place] { return session->drawing(place); });
}
EMSCRIPTEN_KEEPALIVE int table(std::size_t format) {
  return answered([format] { return session->table(format); });
}
EMSCRIPTEN_KEEPALIVE int report(double seconds) {
  return answered([seconds] { return session->report(seconds); });
}

// The style sheet of pages and drawings.
EMSCRIPTEN_KEEPALIVE int style() {
  return answered([] { return velto::drawingStyle() + velto::pageStyle(); });
}

}  // extern "C"
