// Calls the shared object: host MODEL_DIRECTORY BASES. Fails unless the read is coding.
extern "C" int pluginStart(const char* model, const char* bases);

int main(int argc, char** argv) {
  if (argc != 3 || pluginStart("nowhere", argv[2]) != -2) return 2;
  return pluginStart(argv[1], argv[2]) >= 0 ? 0 : 1;
}
