// html: the raw definition as a table.

#include "tasks/product.h"
#include "tasks/tasks.h"

namespace command {

int html(const request& given) {
  return document(given, &optxv::tzmaoptionwriter::htmltext);
}

}  // namespace command
