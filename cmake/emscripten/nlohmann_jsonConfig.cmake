# The system's headers of nlohmann-json for Emscripten, which must not search /usr/include itself.
set(velto_json_include ${CMAKE_BINARY_DIR}/system-include)
file(MAKE_DIRECTORY ${velto_json_include})
file(CREATE_LINK /usr/include/nlohmann ${velto_json_include}/nlohmann SYMBOLIC)
if(NOT TARGET nlohmann_json::nlohmann_json)
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED GLOBAL)
  target_include_directories(nlohmann_json::nlohmann_json INTERFACE ${velto_json_include})
endif()
