#include "output/jsonlists.h"

#include "output/json.h"
#include "output/reporter.h"

namespace command {

void jsonlists::begin(std::string_view name) {
  endlist();
  put(out_, std::string(members_++ > 0 ? ",\n" : "{\n") + "  \"" + std::string(name) + "\": ");
}

void jsonlists::list(std::string_view name) {
  begin(name);
  put(out_, "[");
  open_ = true;
  rows_ = 0;
}

void jsonlists::row(const nlohmann::ordered_json& value) {
  put(out_, (rows_++ > 0 ? ",\n" : "\n") + jsontext(value, 4));
}

void jsonlists::member(std::string_view name, const nlohmann::ordered_json& value) {
  begin(name);
  put(out_, jsontext(value, 2).substr(2));
}

void jsonlists::endlist() {
  if (open_) put(out_, rows_ > 0 ? "\n  ]" : "]");
  open_ = false;
}

void jsonlists::end() {
  endlist();
  put(out_, "\n}\n");
}

}  // namespace command
