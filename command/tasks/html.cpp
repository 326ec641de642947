// html: the raw definition as a table.

#include "tasks/documents.h"
#include "tasks/tasks.h"

namespace command {

int html(const request& given) {
  return document(given, &optxv::tzmaoptionwriter::writeashtml);
}

}  // namespace command
