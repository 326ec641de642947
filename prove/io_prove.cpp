// The functions of the library that read and write files, called as a program would; see walk.h.

#include "foundation/runtime.h"
#include "options/zmaoptions.h"
#include "walk.h"
#include "writers/optionwriter.h"

namespace {

using namespace walk;

template <class Function>
call named(const char* name, promise promised, Function function, const char* file) {
  return {name, promised, [=](optxv_handle& handle, outcome&) { return function(handle, file); }};
}

/// What a writer in C++ does, with its exception as text.
template <class Write>
call written(const char* name, Write write) {
  return {name, promise::thrown, [=](optxv_handle& handle, outcome& out) -> std::int32_t {
            try {
              write(optxv::tzmaoptionwriter(*static_cast<const optxv::tzmaoptions*>(handle)));
              return 0;
            } catch (const optxv::einouterror& failure) {
              out.put(failure.message.view());
              return EIO;
            }
          }};
}

std::int32_t helped(optxv_handle handle, const char* request) {
  coptshowhelp(handle, request);
  return 0;
}

const std::vector<call> calls = {
    named("optReadDefinition", promise::classic, coptreaddefinition, "more.def"),
    named("optReadDefinition of standard input", promise::classic, coptreaddefinition, ""),
    named("optReadParameterFile", promise::classic, coptreadparameterfile, "nesting.opt"),
    named("optReadParameterFile of standard input", promise::classic, coptreadparameterfile, ""),
    named("optWriteParameterFile", promise::classic, coptwriteparameterfile, "new.opt"),
    named("optWriteParameterFile over a file", promise::classic, coptwriteparameterfile, "old.opt"),
    named("optWriteParameterFile to standard output", promise::classic, coptwriteparameterfile, ""),
    named("optShowHelp on standard output", promise::silent, helped, "4"),
    named("optxv_read_definition", promise::status, optxv_read_definition, "more.def"),
    named("optxv_read_parameters", promise::status, optxv_read_parameters, "nesting.opt"),
    named("optxv_read_parameters of standard input", promise::status, optxv_read_parameters, ""),
    named("optxv_write_parameters", promise::status, optxv_write_parameters, "new.opt"),
    named("optxv_write_parameters over a file", promise::status, optxv_write_parameters, "old.opt"),
    named("optxv_write_parameters through a link", promise::status, optxv_write_parameters,
          "link.opt"),
    named("optxv_write_parameters to standard output", promise::status, optxv_write_parameters, ""),
    named("optxv_write_parameters to a device", promise::status, optxv_write_parameters,
          "/dev/stdout"),
    written("writeashtml", [](const auto& writer) { writer.writeashtml("old.opt"); }),
    written("writedefinition", [](const auto& writer) { writer.writedefinition("new.opt"); }),
    written("writedelphiinc", [](const auto& writer) { writer.writedelphiinc("new.opt"); }),
    written("writeashtml to standard output", [](const auto& writer) { writer.writeashtml(""); }),
};

}  // namespace

int main(int argc, char** argv) {
  return walk::run(calls, argc, argv);
}
