#include "agreement.h"

#include <cstring>

namespace optxv::bench {
namespace {

using kind = yardstick::type;

/// Compares the fields of one option and notes those that differ.
class comparison {
 public:
  comparison(optHandle library, const yardstick& yard, std::int32_t optnr)
      : library_(library),
        yard_(yard),
        option_(yard.options()[static_cast<std::size_t>(optnr) - 2]),
        optnr_(optnr) {}

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
    char name[OPTXV_TEXT_SIZE], help[OPTXV_TEXT_SIZE];
    std::int32_t defined, recent, refnr, data, type, sub, hc, group;
    coptgethelpnr(library_, optnr_, name, help);
    same("name", std::string_view(name), option_.name);
    same("help", std::string_view(help), option_.help);
    optgetinfonr(library_, optnr_, &defined, &recent, &refnr, &data, &type, &sub);
    same("defined", defined != 0, option_.defined);
    same("usermap", refnr, option_.usermap);
    same("kind", type, static_cast<std::int32_t>(option_.kind));
    coptgetopthelpnr(library_, optnr_, name, &hc, &group);
    same("help context", hc, option_.hc);
    same("group", group, option_.group);
  }

  void value() {
    std::int32_t integer = 0, ilow = 0, ihigh = 0, istandard = 0;
    double real = 0, dlow = 0, dhigh = 0, dstandard = 0;
    char name[OPTXV_TEXT_SIZE], text[OPTXV_TEXT_SIZE];
    coptgetvaluesnr(library_, optnr_, name, &integer, &real, text);
    if (option_.kind == kind::integer) {
      optgetboundsint(library_, optnr_, &ilow, &ihigh, &istandard);
      same("low", ilow, option_.low.integer);
      same("high", ihigh, option_.high.integer);
      same("default", istandard, option_.standard.integer);
      same("value", integer, option_.value.integer);
    } else if (option_.kind == kind::boolean) {
      same("value", integer, option_.value.integer);
    } else if (option_.kind == kind::real) {
      optgetboundsdbl(library_, optnr_, &dlow, &dhigh, &dstandard);
      same("low", dlow, option_.low.real);
      same("high", dhigh, option_.high.real);
      same("default", dstandard, option_.standard.real);
      same("value", real, option_.value.real);
    } else {
      same("value", std::string_view(text), yard_.textvalue(option_));
    }
  }

  void items() {
    std::int32_t count = 0;
    optgetenumcount(library_, optnr_, &count);
    same("items", count, static_cast<std::int32_t>(option_.lines));
    for (std::int32_t i = 1; i <= count; ++i) {
      std::int32_t hc = 0, unused = 0;
      char name[OPTXV_TEXT_SIZE], help[OPTXV_TEXT_SIZE];
      coptgetenumvalue(library_, optnr_, i, &unused, name);
      coptgetenumhelp(library_, optnr_, i, &hc, help);
      const yardstick::lineof& line =
          yard_.lines()[option_.firstline + static_cast<std::uint32_t>(i) - 1];
      same("item", std::string_view(name), line.name);
      same("item's help", std::string_view(help), line.help);
      same("item's help context", hc, line.hc);
    }
  }

  /// The lines of help that stand below the option come after its own in the queue.
  void helplines() {
    if (option_.lines == 0) return;
    optclearmessages(library_);
    coptshowhelp(library_, std::string(option_.name).c_str());
    const std::int32_t count = optmessagecount(library_);
    for (std::uint32_t i = 0; i < option_.lines; ++i) {
      char text[OPTXV_TEXT_SIZE];
      std::int32_t type;
      coptgetmessage(library_, count - static_cast<std::int32_t>(option_.lines - i) + 1, text,
                     &type);
      const std::string_view shown(text), wanted = yard_.lines()[option_.firstline + i].help;
      same("line of help", shown.ends_with(wanted), true);
    }
    optclearmessages(library_);
  }

  optHandle library_;
  const yardstick& yard_;
  const yardstick::row& option_;
  std::int32_t optnr_;
  std::string found_;
};

}  // namespace

std::string differences(optHandle library, const yardstick& yard) {
  std::string found;
  const auto count = static_cast<std::int32_t>(yard.options().size());
  if (optcount(library) != count + 1) return "the number of options\n";  // the library adds Help
  for (std::int32_t optnr = 2; optnr <= count + 1; ++optnr)
    found += comparison(library, yard, optnr).run();
  if (optgroupcount(library) != static_cast<std::int32_t>(yard.groups().size()))
    found += "groups\n";
  for (std::size_t i = 0; i < yard.groups().size(); ++i) {
    char name[OPTXV_TEXT_SIZE], help[OPTXV_TEXT_SIZE];
    std::int32_t groupnr, hc;
    coptgetgroupnr(library, static_cast<std::int32_t>(i) + 1, name, &groupnr, &hc, help);
    const yardstick::section& group = yard.groups()[i];
    if (name != group.name || groupnr != group.groupnr || hc != group.hc || help != group.help)
      found.append("group ").append(group.name).append("\n");
  }
  return found;
}

}  // namespace optxv::bench
