// definition: what was understood of a definition, in the form of a definition.

#include "tasks/product.h"
#include "tasks/tasks.h"

namespace command {

int definition(const request& given) {
  return document(given, &optxv::tzmaoptionwriter::definitiontext);
}

}  // namespace command
