#include "exchange/jsontree.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>

#include "exchange/settingsform.h"
#include "text/names.h"

namespace command {
namespace {

using nlohmann::json;

constexpr std::string_view bytemark = "\xEF\xBB\xBF";
constexpr std::string_view numbercharacters = "+-.0123456789Ee";
/// A number beyond the reals ends a run of the parser, so that a further run has another one in its
/// place. Nobody writes many of them.
constexpr int mostruns = 100;
constexpr int overflowed = 406;  // the parser's number for such a one

/// The bytes of a text for the parser. It tells how far that has read.
class countedbytes {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  countedbytes(const char* at, const char** furthest) : at_(at), furthest_(furthest) {}
  reference operator*() const { return *at_; }
  countedbytes& operator++() {
    *furthest_ = ++at_;
    return *this;
  }
  friend bool operator==(const countedbytes& left, const countedbytes& right) {
    return left.at_ == right.at_;
  }
  friend bool operator!=(const countedbytes& left, const countedbytes& right) {
    return !(left == right);
  }

 private:
  const char* at_;
  const char** furthest_;
};

jsonvalue valueof(jsonvalue::kind kind, std::string text = {}) {
  jsonvalue value;
  value.is = kind;
  value.text = std::move(text);
  return value;
}

/// Builds the tree from the calls of the parser. These do not tell of places, but between two
/// values there are only blanks, commas and colons, and a string is the only value whose end cannot
/// be told from its beginning: that is where the parser stands when it tells of it.
class builder {
 public:
  /// The text as it is, and as the parser reads it. BORROWS: both.
  builder(std::string_view text, std::string_view read) : text_(text), read_(read) {
    if (text.starts_with(bytemark)) end_ = bytemark.size();
  }

  bool run();
  /// The number that is beyond the reals, if one ended the run.
  textspan overflow() const { return overflow_; }
  jsontree& tree() { return tree_; }

  // The parser's calls; false ends the run.
  bool null() { return add(valueof(jsonvalue::kind::null), 4); }
  bool boolean(bool yes) {
    jsonvalue value = valueof(jsonvalue::kind::boolean);
    value.yes = yes;
    return add(std::move(value), yes ? 4U : 5U);
  }
  bool number_integer(json::number_integer_t) { return number(); }
  bool number_unsigned(json::number_unsigned_t) { return number(); }
  bool number_float(json::number_float_t, const std::string&) { return number(); }
  bool string(std::string& text) {
    return add(valueof(jsonvalue::kind::text, std::move(text)), read() - next());
  }
  bool binary(json::binary_t&) { return false; }
  bool start_object(std::size_t) { return open(jsonvalue::kind::object); }
  bool key(std::string& name);
  bool end_object() { return close(); }
  bool start_array(std::size_t) { return open(jsonvalue::kind::list); }
  bool end_array() { return close(); }
  bool parse_error(std::size_t position, const std::string& token, const json::exception& why);

 private:
  /// A list or an object that is being read, and the names that it has.
  struct level {
    jsonvalue* value;
    std::map<std::string, textspan, std::less<>> names = {};
    bool dropped = false;  ///< the value of the name that was read last goes nowhere
  };

  std::size_t read() const { return static_cast<std::size_t>(furthest_ - read_.data()); }
  std::size_t next() const;
  bool number();
  bool add(jsonvalue value, std::size_t size);
  jsonvalue* place(jsonvalue value);
  bool open(jsonvalue::kind kind);
  bool close();
  bool fault(textspan where, std::string text);
  std::string expected() const;
  std::string habit(std::size_t at) const;

  std::string_view text_, read_;
  const char* furthest_ = nullptr;
  std::size_t end_ = 0;  ///< of what the parser told last
  bool named_ = false;   ///< that was a name
  textspan overflow_ = {};
  jsontree tree_;
  std::vector<level> levels_;
  jsonvalue nowhere_;  ///< takes the values of names that come again
};

bool builder::run() {
  furthest_ = read_.data();
  return json::sax_parse(countedbytes(read_.data(), &furthest_),
                         countedbytes(read_.data() + read_.size(), &furthest_), this);
}

/// Where the next value begins.
std::size_t builder::next() const {
  const auto between = [](char c) {
    return c == ' ' || c == '\n' || c == ',' || c == ':' || c == '\t' || c == '\r';
  };
  std::size_t at = end_;
  while (at < text_.size() && between(text_[at])) at++;
  return at;
}

/// How much of a text is a number. A zero ends one that begins with it, but for a fraction or an
/// exponent.
std::size_t numbersize(std::string_view text) {
  const std::size_t sign = text.starts_with('-') ? 1 : 0;
  const std::size_t size = std::min(text.find_first_not_of(numbercharacters), text.size());
  const bool zero = size > sign + 1 && text[sign] == '0';
  return zero && isdigit(text[sign + 1]) ? sign + 1 : size;
}

bool builder::number() {
  const std::size_t begin = next();
  const std::size_t size = numbersize(text_.substr(begin));
  return add(valueof(jsonvalue::kind::number, std::string(text_.substr(begin, size))), size);
}

bool builder::add(jsonvalue value, std::size_t size) {
  value.where.begin = next();
  end_ = value.where.end = value.where.begin + size;
  place(std::move(value));
  return true;
}

/// Puts a value where it belongs.
jsonvalue* builder::place(jsonvalue value) {
  named_ = false;
  if (levels_.empty()) return &(tree_.root = std::move(value));
  level& now = levels_.back();
  if (now.dropped) return &(nowhere_ = std::move(value));
  if (now.value->is == jsonvalue::kind::list)
    return &now.value->items.emplace_back(std::move(value));
  return &(now.value->members.back().value = std::move(value));
}

bool builder::open(jsonvalue::kind kind) {
  const std::size_t begin = next();
  end_ = begin + 1;
  if (levels_.size() == deepestjson)
    return fault({begin, end_}, "lists and objects are more than " + std::to_string(deepestjson) +
                                    " deep in one another");
  const bool dropped = !levels_.empty() && levels_.back().dropped;
  jsonvalue opened = valueof(kind);
  opened.where = {begin, end_};
  jsonvalue* const value = place(std::move(opened));
  levels_.push_back({.value = value, .dropped = dropped});
  return true;
}

bool builder::close() {
  named_ = false;
  end_ = next() + 1;
  levels_.pop_back();
  return true;
}

/// The members of an object that is dropped itself are dropped too, without a word.
bool builder::key(std::string& name) {
  level& now = levels_.back();
  const textspan where = {next(), read()};
  end_ = where.end;
  named_ = true;
  if (now.value == &nowhere_) return true;
  const auto [at, fresh] = now.names.emplace(name, where);
  now.dropped = !fresh;
  if (fresh)
    now.value->members.push_back({std::move(name), where, {}});
  else
    tree_.faults.push_back({where, "", true, at->second});
  return true;
}

bool builder::fault(textspan where, std::string text) {
  tree_.faults.push_back({where, std::move(text)});
  return false;
}

/// What the parser does not take, from the token on that it stumbled over.
bool builder::parse_error(std::size_t, const std::string&, const json::exception& why) {
  const std::size_t begin = next(), end = std::max(begin, read());
  if (why.id == overflowed) {
    overflow_ = {begin, text_.find_first_not_of(numbercharacters, begin)};
    return false;
  }
  const std::string_view seen = text_.substr(begin, end - begin);
  const std::size_t good = goodbytes(seen);
  const bool closed = good == seen.size() && seen.size() > 1 && seen.back() == '"';
  if (!seen.starts_with('"') || closed) return fault({begin, begin + 1}, expected() + habit(begin));
  if (good == seen.size() && end == text_.size() && seen.back() != '\n')
    return fault({begin, end}, "the text that begins here has no closing quote");
  const std::size_t bad = begin + std::min(good, seen.size() - 1);
  return fault({bad, bad + 1},
               "a character that JSON does not have in a text: it takes UTF-8, with an escape for "
               "control characters");
}

/// What may come where the parser stands.
std::string builder::expected() const {
  const std::string_view between = text_.substr(end_, next() - end_);
  const bool comma = between.find(',') != between.npos, colon = between.find(':') != between.npos;
  if (named_) return colon ? "a value is expected" : "a colon is expected, and a value";
  if (levels_.empty())
    return tree_.root.where.end > 0 ? "the end of the text is expected" : "a value is expected";
  const jsonvalue& now = *levels_.back().value;
  const bool object = now.is == jsonvalue::kind::object;
  if (comma) {
    const std::size_t at = next();
    const bool closing = at < text_.size() && (text_[at] == '}' || text_[at] == ']');
    return (object ? "a name in double quotes is expected" : "a value is expected") +
           std::string(closing ? "; JSON has no comma in front of a bracket" : "");
  }
  const bool first = object ? now.members.empty() : now.items.empty();
  if (!first) return object ? "a comma or } is expected" : "a comma or ] is expected";
  return object ? "a name in double quotes or } is expected" : "a value or ] is expected";
}

/// What other languages have and JSON has not.
std::string builder::habit(std::size_t at) const {
  const char seen = at < text_.size() ? text_[at] : '\0';
  if (seen == '/' || seen == '#') return "; JSON has no comments";
  if (seen == '\'') return "; JSON has no single quotes";
  if (isdigit(seen) && end_ == at) return "; a number does not begin with 0";
  if (seen == 'N' || seen == 'I') return "; JSON has no such number";
  return "";
}

}  // namespace

const jsonvalue* jsonvalue::find(std::string_view name) const {
  const auto found = std::ranges::find(members, name, &jsonmember::name);
  return found == members.end() ? nullptr : &found->value;
}

jsontree readjson(std::string_view text) {
  std::string changed;
  for (int runs = 1;; runs++) {
    builder one(text, changed.empty() ? text : changed);
    one.tree().whole = one.run();
    const textspan overflow = one.overflow();
    if (overflow.end == 0 || runs == mostruns) return std::move(one.tree());
    if (changed.empty()) changed = text;
    for (std::size_t i = overflow.begin; i < std::min(overflow.end, text.size()); i++)
      changed[i] = i == overflow.begin + 1 ? '.' : '1';
  }
}

std::string_view wordof(jsonvalue::kind kind) {
  constexpr std::array<std::string_view, 6> words = {"null",   "true or false", "a number",
                                                     "a text", "a list",        "an object"};
  return words[static_cast<std::size_t>(kind)];
}

}  // namespace command
