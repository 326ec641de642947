#include "output/failure.h"

#include <cstdio>

#include "platform/descriptors.h"
#include "text/printable.h"

namespace command {
namespace {

std::string lineof(std::string_view weight, std::string_view text) {
  return "optxv: " + std::string(weight) + ": " + printable(text) + '\n';
}

void puterror(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace

std::string failuretext(const failure& told) {
  std::string why = told.why;
  if (why.empty() && told.error != 0) why = optxv::systemtext(told.error);
  std::string text = lineof("error", why.empty() ? told.what : told.what + ": " + why);
  for (const std::string& note : told.notes) text += lineof("note", note);
  return text;
}

int tell(const failure& told) {
  puterror(failuretext(told));
  return statusfailed;
}

void tellwarning(std::string_view text) {
  puterror(lineof("warning", text));
}

void tellnote(std::string_view text) {
  puterror(lineof("note", text));
}

std::string filewords(const std::string& file) {
  return file.empty() ? "standard output" : file;
}

}  // namespace command
