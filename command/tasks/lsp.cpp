// lsp: the language server.

#include "server/streams.h"
#include "tasks/tasks.h"

namespace command {

int lsp(const request& given) {
  return serve(given.log);
}

}  // namespace command
