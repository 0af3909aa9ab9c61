// A shared object with one C function around the library.
#include <velto/velto.h>

// First base of the coding region, -1 for none, -2 for a model that cannot be used.
extern "C" int pluginStart(const char* model, const char* bases) {
  try {
    const velto::Predictor predictor(model);
    velto::Workspace workspace;
    return predictor.predict(bases, workspace).start;
  } catch (const velto::Error&) {
    return -2;
  }
}
