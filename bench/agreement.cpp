#include "agreement.h"

namespace optxv::bench {
namespace {

using kind = yardstick::type;

/// Compares the fields of one option and notes those that differ.
class comparison {
 public:
  comparison(const options& library, const yardstick& yard, std::int32_t optnr)
      : library_(library),
        yard_(yard),
        ours_(library.describe(optnr)),
        option_(yard.options()[static_cast<std::size_t>(optnr) - 2]) {}

  std::string run() {
    fields();
    value();
    if (option_.kind == kind::enumerated)
      items();
    else
      helplines();
    return found_;
  }

 private:
  template <class Value>
  void same(const char* field, const Value& library, const Value& yard) {
    if (library != yard) found_.append(option_.name).append(": ").append(field).append("\n");
  }

  void fields() {
    same("name", ours_.name, option_.name);
    same("help", ours_.help, option_.help);
    same("defined", ours_.defined != 0, option_.defined);
    same("usermap", ours_.reference, option_.usermap);
    same("kind", ours_.kind, static_cast<std::int32_t>(option_.kind));
    same("help context", ours_.help_context, option_.hc);
    same("group", ours_.group, option_.group);
  }

  void value() {
    if (option_.kind == kind::integer) {
      same<double>("low", ours_.low, option_.low.integer);
      same<double>("high", ours_.high, option_.high.integer);
      same<double>("default", ours_.default_value, option_.standard.integer);
    } else if (option_.kind == kind::real) {
      same("low", ours_.low, option_.low.real);
      same("high", ours_.high, option_.high.real);
      same("default", ours_.default_value, option_.standard.real);
    }
    if (option_.kind == kind::integer || option_.kind == kind::boolean)
      same("value", library_.get<std::int32_t>(ours_.number), option_.value.integer);
    else if (option_.kind == kind::real)
      same("value", library_.get<double>(ours_.number), option_.value.real);
    else
      same("value", library_.get<std::string_view>(ours_.number), yard_.textvalue(option_));
  }

  const yardstick::lineof& yardline(std::size_t index) const {
    return yard_.lines()[option_.firstline + index];
  }

  void items() {
    const auto items = library_.items(ours_.number);
    same("items", items.size(), std::size_t{option_.lines});
    for (std::size_t i = 0; i < items.size(); ++i) {
      same("item", items[i].text, yardline(i).name);
      same("item's help", items[i].help, yardline(i).help);
      same("item's help context", items[i].help_context, yardline(i).hc);
    }
  }

  void helplines() {
    const auto lines = library_.help_lines(ours_.number);
    same("lines of help", lines.size(), std::size_t{option_.lines});
    for (std::size_t i = 0; i < lines.size(); ++i) same("line of help", lines[i], yardline(i).help);
  }

  const options& library_;
  const yardstick& yard_;
  const option ours_;
  const yardstick::row& option_;
  std::string found_;
};

}  // namespace

std::string differences(const options& library, const yardstick& yard) {
  std::string found;
  const std::size_t count = yard.options().size();
  if (library.table().size() != count + 1) return "the number of options\n";  // it adds Help
  for (std::size_t optnr = 2; optnr <= count + 1; ++optnr)
    found += comparison(library, yard, static_cast<std::int32_t>(optnr)).run();
  const auto groups = library.groups();
  if (groups.size() != yard.groups().size()) return found + "groups\n";
  for (std::size_t i = 0; i < groups.size(); ++i) {
    const group ours = groups[i];
    const yardstick::section& yards = yard.groups()[i];
    if (ours.name != yards.name || ours.number != yards.groupnr || ours.help_context != yards.hc ||
        ours.help != yards.help)
      found.append("group ").append(yards.name).append("\n");
  }
  return found;
}

}  // namespace optxv::bench
