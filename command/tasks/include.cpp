// include: the numbers of the options for Object Pascal.

#include "tasks/product.h"
#include "tasks/tasks.h"

namespace command {

int include(const request& given) {
  return document(given, &optxv::tzmaoptionwriter::delphiinctext);
}

}  // namespace command
