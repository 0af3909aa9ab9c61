#include "draw/page.h"

#include "draw/markup.h"
#include "draw/style.h"

namespace velto {

std::string htmlPage(std::string_view title, const std::string& body) {
  return "<!DOCTYPE html>\n"
         "<html lang=\"en\" xmlns=\"http://www.w3.org/1999/xhtml\">\n<head>\n"
         "<meta charset=\"utf-8\"/>\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
         "'unsafe-inline'; base-uri 'none'; form-action 'none'\"/>\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n<title>" +
         escaped(title) + "</title>\n<style>\n" + drawingStyle() + pageStyle() +
         "</style>\n</head>\n<body>\n<main>\n" + body + "</main>\n</body>\n</html>\n";
}

std::string factTable(const Facts& facts) {
  std::string rows;
  for (const auto& [name, value] : facts) {
    rows +=
        "<tr><th scope=\"row\">" + escaped(name) + "</th><td>" + escaped(value) + "</td></tr>\n";
  }
  return "<table class=\"facts\">\n" + rows + "</table>\n";
}

std::string wideOrNarrow(const std::string& wide, const std::string& narrow) {
  return "<div class=\"wide\">" + wide + "</div>\n<div class=\"narrow\">" + narrow + "</div>\n";
}

}  // namespace velto
