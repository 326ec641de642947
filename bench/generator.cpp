#include "generator.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <random>
#include <set>

namespace optxv::bench {
namespace {

using source = std::mt19937;

constexpr std::array<std::string_view, 64> words = {
    "root",    "node",     "cut",     "branch",    "depth",    "rounds",    "limit",   "freq",
    "max",     "min",      "weight",  "factor",    "presolve", "simplex",   "barrier", "dual",
    "primal",  "scaling",  "iter",    "gap",       "bound",    "local",     "global",  "search",
    "dive",    "start",    "restart", "cover",     "clique",   "flow",      "mixing",  "probing",
    "implied", "cost",     "quad",    "conic",     "tree",     "memory",    "time",    "delay",
    "offset",  "priority", "score",   "sparse",    "dense",    "pivot",     "update",  "refine",
    "check",   "strong",   "pseudo",  "candidate", "column",   "row",       "aging",   "pool",
    "filter",  "symmetry", "orbit",   "separate",  "cascade",  "aggregate", "use",     "tolerance"};

constexpr std::size_t groups = 24;

std::size_t below(source& random, std::size_t limit) {
  return random() % limit;
}

std::string_view anyword(source& random) {
  return words[below(random, words.size())];
}

std::string number(double value, int digits) {
  char text[64];
  return {text,
          std::to_chars(text, text + sizeof text, value, std::chars_format::general, digits).ptr};
}

/// A name of 29 bytes on average, in a spread from 18 to 40.
std::string anyname(source& random) {
  const std::size_t wanted = 15 + below(random, 10) + below(random, 10);
  std::string name{anyword(random)};
  while (name.size() < wanted) name.append("_").append(anyword(random));
  return name;
}

std::string sentence(source& random, std::size_t length) {
  std::string text{anyword(random)};
  while (text.size() < length) text.append(" ").append(anyword(random));
  return text;
}

/// hc, group and text: what every record ends in.
std::string tail(source& random, std::size_t place) {
  return " " + std::to_string(place + groups) + " " + std::to_string(1 + below(random, groups)) +
         " " + sentence(random, 40 + below(random, 60));
}

void makeinteger(generatedoption& option, source& random, std::string_view head) {
  constexpr std::array<std::string_view, 4> bounds = {" 0 maxint", " -1 65534", " 0 100",
                                                      " minint maxint"};
  const std::size_t which = below(random, bounds.size());
  option.record.append(head).append(std::to_string(below(random, 100))).append(bounds[which]);
  option.value = std::to_string(which == 2 ? 1 + below(random, 99) : below(random, 60000));
  option.fault = which == 3 ? "many" : "-7";
  option.isinteger = true;
}

void makedouble(generatedoption& option, source& random, std::string_view head) {
  constexpr std::array<std::string_view, 4> bounds = {" 0 1", " 0 maxdouble", " 1e-9 1e3",
                                                      " mindouble maxdouble"};
  const std::size_t which = below(random, bounds.size());
  option.record.append(head)
      .append("0.")
      .append(std::to_string(1 + below(random, 9)))
      .append(bounds[which]);
  const double chance = static_cast<double>(random()) / 4294967296.0;
  const double size = std::pow(10.0, -static_cast<double>(below(random, 8)));
  option.value = number((chance + 0.01) * size * 0.9, 1 + static_cast<int>(below(random, 15)));
  option.fault = which == 3 ? "1.5.2" : "-0.25";
}

void makeenumstr(generatedoption& option, source& random, std::string_view head,
                 std::size_t place) {
  std::set<std::string_view> items;
  while (items.size() < 4) items.insert(anyword(random));
  option.record.append(head).append(*items.begin());
  option.value = *items.rbegin();
  option.fault = "none_of_them";
  for (const std::string_view item : items)
    option.below.push_back(std::string(item) + " " + std::to_string(place) + " " +
                           sentence(random, 20));
}

void makestring(generatedoption& option, source& random, std::string_view head) {
  option.record.append(head).append("\"").append(sentence(random, 10)).append("\"");
  option.value = "\"" + sentence(random, 15) + "\"";
}

generatedoption anyoption(source& random, std::size_t place) {
  generatedoption option;
  const std::string usermap = " " + std::to_string(place) + " ";
  const std::size_t chance = below(random, 100);
  option.numeric = chance < 96;
  if (chance < 39) {
    makeinteger(option, random, " integer" + usermap);
  } else if (chance < 66) {
    makedouble(option, random, " double" + usermap);
  } else if (chance < 96) {
    const bool on = below(random, 2) == 1;
    option.record = " boolean" + usermap + (on ? "1" : "0");
    option.value = on ? "FALSE" : "TRUE";
    option.fault = "perhaps";
  } else if (chance < 99) {
    makeenumstr(option, random, " enumstr" + usermap, place);
  } else {
    makestring(option, random, " string" + usermap);
  }
  option.record += tail(random, place);
  if (option.numeric && below(random, 25) == 0)
    for (int line = 0; line < 3; ++line) option.below.push_back(sentence(random, 70));
  return option;
}

/// The positions of the table over and over, in another order each time.
class permutation {
 public:
  permutation(std::size_t count, std::uint32_t seed) : random_(seed), order_(count), next_(count) {
    for (std::size_t i = 0; i < count; ++i) order_[i] = i;
  }
  std::size_t next() {
    if (next_ == order_.size()) {
      std::shuffle(order_.begin(), order_.end(), random_);
      next_ = 0;
    }
    return order_[next_++];
  }

 private:
  source random_;
  std::vector<std::size_t> order_;
  std::size_t next_;
};

}  // namespace

std::vector<generatedoption> generatetable(std::size_t count, std::uint32_t seed) {
  source random(seed);
  std::set<std::string> taken;
  std::vector<generatedoption> table;
  while (table.size() < count) {
    std::string name = anyname(random);
    if (!taken.insert(name).second) continue;
    table.push_back(anyoption(random, table.size() + 1));
    table.back().name = std::move(name);
  }
  return table;
}

std::string definitiontext(const std::vector<generatedoption>& table) {
  std::string text = "comment eolcomm #\n";
  for (std::size_t i = 1; i <= groups; ++i) {
    const std::string n = std::to_string(i);
    text.append("group")
        .append(n)
        .append(" group ")
        .append(n)
        .append(" ")
        .append(n)
        .append(" Group ")
        .append(n)
        .append("\n");
  }
  for (const generatedoption& option : table) {
    text.append(option.name).append(option.record).append("\n");
    for (const std::string& line : option.below) text.append(" ").append(line).append("\n");
  }
  return text;
}

std::string parametertext(const std::vector<generatedoption>& table, std::size_t lines,
                          std::uint32_t seed) {
  permutation order(table.size(), seed);
  std::string text;
  for (std::size_t line = 0; line < lines; ++line) {
    const generatedoption& option = table[order.next()];
    text.append(option.name).append(" = ").append(option.value).append("\n");
  }
  return text;
}

std::string faultytext(const std::vector<generatedoption>& table, std::size_t lines,
                       std::uint32_t seed) {
  permutation order(table.size(), seed);
  std::string text;
  for (std::size_t line = 0; line < lines; ++line) {
    const generatedoption& option = table[order.next()];
    const bool unknown = line % 3 == 0 || option.fault.empty();
    text.append(option.name).append(unknown ? "x" : "").append(" = ");
    text.append(unknown ? option.value : option.fault).append("\n");
  }
  return text;
}

std::vector<generatedoption> numericpart(const std::vector<generatedoption>& table) {
  std::vector<generatedoption> part;
  std::copy_if(table.begin(), table.end(), std::back_inserter(part),
               [](const generatedoption& option) { return option.numeric; });
  return part;
}

std::string dottext(std::size_t lines, std::uint32_t seed) {
  source random(seed);
  std::string text;
  for (std::size_t line = 0; line < lines; ++line) {
    text.append(anyword(random)).append("_").append(anyword(random)).append(".scale('i");
    text.append(std::to_string(below(random, 1000)))
        .append("','j")
        .append(std::to_string(below(random, 1000)));
    text.append("') = ")
        .append(number(1.0 + static_cast<double>(below(random, 1000)) / 8, 6))
        .append("\n");
  }
  return text;
}

}  // namespace optxv::bench
