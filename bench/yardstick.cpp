#include "yardstick.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace optxv::bench {
namespace {

constexpr std::size_t blocksize = 65536, keptmessages = 5000;

/// The lower-case form of every byte.
constexpr std::array<char, 256> lower = [] {
  std::array<char, 256> table{};
  for (std::size_t c = 0; c < 256; ++c)
    table[c] = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  return table;
}();

/// The bytes that names are made of.
constexpr std::array<bool, 256> inname = [] {
  std::array<bool, 256> table{};
  for (const char c :
       std::string_view("abcdefghijklmnopqrstuvwxyz0123456789_ABCDEFGHIJKLMNOPQRSTUVWXYZ"))
    table[static_cast<unsigned char>(c)] = true;
  return table;
}();

/// Eight bytes at a time; setting bit 5 folds the case of letters, and still tells all other bytes
/// of a name apart.
std::uint32_t hashof(std::string_view name) {
  std::uint64_t hash = name.size();
  const auto mix = [&hash](const char* at, std::size_t size) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, size);
    hash = (hash ^ (word | 0x2020202020202020u)) * 0x9E3779B97F4A7C15u;
    hash ^= hash >> 32;
  };
  const char* at = name.data();
  std::size_t left = name.size();
  for (; left >= 8; left -= 8, at += 8) mix(at, 8);
  mix(at, left);
  return static_cast<std::uint32_t>(hash);
}

bool samename(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  if (std::memcmp(a.data(), b.data(), a.size()) == 0) return true;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (lower[static_cast<unsigned char>(a[i])] != lower[static_cast<unsigned char>(b[i])])
      return false;
  return true;
}

bool blank(char c) {
  return c == ' ' || c == '\t';
}

/// The lines of a file, read in blocks; a line is good until the next is asked for.
class linesource {
 public:
  explicit linesource(const char* filename)
      : file_(::open(filename, O_RDONLY | O_CLOEXEC)), block_(blocksize) {}
  ~linesource() {
    if (file_ >= 0) ::close(file_);
  }
  linesource(const linesource&) = delete;
  linesource& operator=(const linesource&) = delete;
  bool good() const { return file_ >= 0; }

  bool next(std::string_view& line) {
    for (;;) {
      char* start = block_.data() + begin_;
      if (auto* stop = static_cast<char*>(std::memchr(start, '\n', end_ - begin_))) {
        line = {start, static_cast<std::size_t>(stop - start)};
        begin_ += line.size() + 1;
        return true;
      }
      if (!refill()) break;
    }
    line = {block_.data() + begin_, end_ - begin_};
    begin_ = end_;
    return !line.empty();
  }

 private:
  bool refill() {
    std::memmove(block_.data(), block_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    if (end_ == block_.size()) block_.resize(block_.size() * 2);
    const ssize_t got = ::read(file_, block_.data() + end_, block_.size() - end_);
    if (got <= 0) return false;
    end_ += static_cast<std::size_t>(got);
    return true;
  }
  int file_;
  std::vector<char> block_;
  std::size_t begin_ = 0, end_ = 0;
};

bool tonumber(std::string_view text, std::int32_t& value) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc() && end == text.data() + text.size()) return true;
  if (samename(text, "maxint")) return value = INT32_MAX, true;
  if (samename(text, "minint")) return value = INT32_MIN, true;
  return false;
}

bool tonumber(std::string_view text, double& value) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc() && end == text.data() + text.size()) return true;
  if (samename(text, "maxdouble")) return value = 1e299, true;
  if (samename(text, "mindouble")) return value = -1e299, true;
  return false;
}

bool toboolean(std::string_view text, std::int32_t& value) {
  for (const std::string_view word : {"1", "y", "yes", "on", "true", "t"})
    if (samename(text, word)) return value = 1, true;
  for (const std::string_view word : {"0", "n", "no", "off", "false", "f"})
    if (samename(text, word)) return value = 0, true;
  return false;
}

/// 15 digits at most; an exponent as in 1.5E-7.
char* printreal(char* at, double value) {
  char* end = std::to_chars(at, at + 32, value, std::chars_format::general, 15).ptr;
  char* e = std::find(at, end, 'e');
  if (e == end) return end;
  *e++ = 'E';
  char* digits = e + 1;  // after the sign
  if (*e == '-') ++e;
  while (*digits == '0') ++digits;
  return std::copy(digits, end, e);
}

}  // namespace

/// One line and the place in it.
struct yardstick::scanner {
  const char* at;
  const char* end;

  void skipblanks() {
    while (at != end && blank(*at)) ++at;
  }
  std::string_view name() {
    const char* start = at;
    while (at != end && inname[static_cast<unsigned char>(*at)]) ++at;
    return {start, static_cast<std::size_t>(at - start)};
  }
  std::string_view word() {
    skipblanks();
    if (at != end && *at == '"') return quoted();
    const char* start = at;
    while (at != end && !blank(*at)) ++at;
    return {start, static_cast<std::size_t>(at - start)};
  }
  std::string_view quoted() {
    const char* start = ++at;
    while (at != end && *at != '"') ++at;
    const std::string_view text{start, static_cast<std::size_t>(at - start)};
    if (at != end) ++at;
    return text;
  }
  std::int32_t integer() {
    std::int32_t value = 0;
    tonumber(word(), value);
    return value;
  }
  double real() {
    double value = 0;
    tonumber(word(), value);
    return value;
  }
  std::string_view rest() {
    skipblanks();
    while (end != at && blank(end[-1])) --end;
    return {at, static_cast<std::size_t>(end - at)};
  }
};

std::string_view yardstick::keep(std::string_view text) {
  if (text.size() > room_) {
    room_ = std::max<std::size_t>(4000, text.size());
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(room_));
    free_ = blocks_.back().get();
  }
  char* place = free_;
  if (!text.empty()) std::memcpy(place, text.data(), text.size());
  free_ += text.size();
  room_ -= text.size();
  return {place, text.size()};
}

std::int32_t yardstick::probe(std::string_view name, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = hash & mask; slots_[i].position >= 0; i = (i + 1) & mask)
    if (slots_[i].hash == hash &&
        samename(options_[static_cast<std::size_t>(slots_[i].position)].name, name))
      return slots_[i].position;
  return -1;
}

void yardstick::enter(std::string_view name, std::uint32_t hash) {
  if ((options_.size() + 1) * 2 > slots_.size()) {
    std::vector<slot> old(slots_.empty() ? 64 : slots_.size() * 2, slot{0, -1});
    old.swap(slots_);
    for (const slot& entry : old) {
      if (entry.position < 0) continue;
      std::size_t i = entry.hash & (slots_.size() - 1);
      while (slots_[i].position >= 0) i = (i + 1) & (slots_.size() - 1);
      slots_[i] = entry;
    }
  }
  if (probe(name, hash) >= 0) return fault("duplicate option ", name);
  std::size_t i = hash & (slots_.size() - 1);
  while (slots_[i].position >= 0) i = (i + 1) & (slots_.size() - 1);
  slots_[i] = {hash, static_cast<std::int32_t>(options_.size())};
}

void yardstick::record(scanner& line) {
  const std::string_view name = line.name(), kind = line.word();
  if (kind == "eolcomm") {
    for (const char c : line.rest()) comment_[static_cast<unsigned char>(c)] = true;
    return;
  }
  if (kind == "group") {
    const std::int32_t groupnr = line.integer(), hc = line.integer();
    groups_.push_back({keep(name), keep(line.rest()), groupnr, hc});
    return;
  }
  enter(name, hashof(name));
  row made{};
  made.usermap = line.integer();
  if (kind == "integer") {
    made.kind = type::integer;
    made.standard.integer = line.integer();
    made.low.integer = line.integer();
    made.high.integer = line.integer();
    if (made.standard.integer < made.low.integer || made.standard.integer > made.high.integer)
      fault("default out of range for ", name);
  } else if (kind == "double") {
    made.kind = type::real;
    made.standard.real = line.real();
    made.low.real = line.real();
    made.high.real = line.real();
    if (made.standard.real < made.low.real || made.standard.real > made.high.real)
      fault("default out of range for ", name);
  } else if (kind == "boolean") {
    made.kind = type::boolean;
    made.standard.integer = line.integer();
  } else if (kind == "string" || kind == "enumstr") {
    made.kind = kind == "string" ? type::text : type::enumerated;
    made.standard.integer = static_cast<std::int32_t>(texts_.size());
    texts_.emplace_back(line.word());
  } else {
    return fault("unknown type for ", name);
  }
  made.value = made.standard;
  made.hc = line.integer();
  made.group = line.integer();
  made.name = keep(name);
  made.help = keep(line.rest());
  made.firstline = static_cast<std::uint32_t>(lines_.size());
  options_.push_back(made);
}

void yardstick::continued(scanner& line) {
  if (options_.empty()) return;
  row& last = options_.back();
  lineof made{};
  if (last.kind == type::enumerated) {
    made.name = keep(line.word());
    made.hc = line.integer();
    std::int32_t& standard = last.standard.integer;  // a place in texts_, until its item is found
    if (!last.defined && samename(made.name, texts_[static_cast<std::size_t>(standard)])) {
      standard = last.value.integer = static_cast<std::int32_t>(last.lines);
      texts_.pop_back();
      last.defined = true;
    }
  }
  made.help = keep(line.rest());
  lines_.push_back(made);
  ++last.lines;
}

bool yardstick::readdefinition(const char* filename) {
  linesource source(filename);
  if (!source.good()) return false;
  for (std::string_view text; source.next(text);) {
    ++linenumber_;
    if (text.empty() || text.front() == '*') continue;
    scanner line{text.data(), text.data() + text.size()};
    if (text.front() == ' ')
      continued(line);
    else
      record(line);
  }
  for (row& option : options_) {
    if (option.kind == type::enumerated && !option.defined)
      fault("default undefined for ", option.name);
    option.defined = false;
  }
  options_.shrink_to_fit();
  lines_.shrink_to_fit();
  return true;
}

bool yardstick::readparameters(const char* filename) {
  linesource source(filename);
  if (!source.good()) return false;
  linenumber_ = 0;
  for (std::string_view text; source.next(text);) {
    ++linenumber_;
    if (text.empty() || text.front() == '*') continue;
    scanner line{text.data(), text.data() + text.size()};
    assignment(line);
  }
  return true;
}

void yardstick::assignment(scanner& line) {
  line.skipblanks();
  if (line.at == line.end || comment_[static_cast<unsigned char>(*line.at)]) return;
  const std::string_view name = line.name();
  const std::int32_t position = probe(name, hashof(name));
  if (position < 0) return fault("unknown option ", name);
  line.skipblanks();
  if (line.at != line.end && *line.at == ':') ++line.at;
  if (line.at != line.end && *line.at == '=') ++line.at;
  line.skipblanks();
  std::string_view value;
  if (line.at != line.end && *line.at == '"') {
    value = line.quoted();
  } else {
    const char* start = line.at;
    while (line.at != line.end && !comment_[static_cast<unsigned char>(*line.at)]) ++line.at;
    value = scanner{start, line.at}.rest();
  }
  if (!assign(options_[static_cast<std::size_t>(position)], value)) fault("bad value for ", name);
}

bool yardstick::assign(row& option, std::string_view value) {
  std::int32_t integer;
  double real;
  switch (option.kind) {
    case type::integer:
      if (!tonumber(value, integer) || integer < option.low.integer ||
          integer > option.high.integer)
        return false;
      option.value.integer = integer;
      break;
    case type::real:
      if (!tonumber(value, real) || real < option.low.real || real > option.high.real) return false;
      option.value.real = real;
      break;
    case type::boolean:
      if (!toboolean(value, integer)) return false;
      option.value.integer = integer;
      break;
    case type::enumerated:
      for (std::uint32_t i = 0;; ++i) {
        if (i == option.lines) return false;
        if (!samename(lines_[option.firstline + i].name, value)) continue;
        option.value.integer = static_cast<std::int32_t>(i);
        break;
      }
      break;
    case type::text:
      if (!option.defined) {
        option.value.integer = static_cast<std::int32_t>(texts_.size());
        texts_.emplace_back();
      }
      texts_[static_cast<std::size_t>(option.value.integer)] = value;
      break;
  }
  option.defined = true;
  return true;
}

void yardstick::fault(std::string_view what, std::string_view name) {
  if (++errors_ > keptmessages) return;
  messages_.push_back("line " + std::to_string(linenumber_) + ": ");
  messages_.back().append(what).append(name);
}

void yardstick::clearerrors() {
  errors_ = 0;
  messages_.clear();
}

std::int32_t yardstick::find(const char* name) const {
  return probe(name, hashof(name));
}

bool yardstick::getinteger(std::int32_t position, std::int32_t& value) const {
  if (position < 0 || static_cast<std::size_t>(position) >= options_.size()) return false;
  const row& option = options_[static_cast<std::size_t>(position)];
  if (option.kind != type::integer && option.kind != type::boolean) return false;
  value = option.value.integer;
  return true;
}

std::string_view yardstick::textvalue(const row& option) const {
  if (option.kind == type::text) return texts_[static_cast<std::size_t>(option.value.integer)];
  return lines_[option.firstline + static_cast<std::uint32_t>(option.value.integer)].name;
}

bool yardstick::write(const char* filename) const {
  const int file = ::open(filename, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0) return false;
  std::vector<char> block(blocksize);
  char* at = block.data();
  bool good = true;
  const auto flush = [&] {
    good = ::write(file, block.data(), static_cast<std::size_t>(at - block.data())) ==
               at - block.data() &&
           good;
    at = block.data();
  };
  const auto put = [&](std::string_view text) { at = std::copy(text.begin(), text.end(), at); };
  for (const row& option : options_) {
    if (!option.defined) continue;
    if (block.data() + blocksize - at < 1024) flush();
    put(option.name);
    *at++ = '=';
    if (option.kind == type::integer || option.kind == type::boolean) {
      at = std::to_chars(at, at + 32, option.value.integer).ptr;
    } else if (option.kind == type::real) {
      at = printreal(at, option.value.real);
    } else {
      const std::string_view text = textvalue(option);
      const bool quotes = text.empty() || text.find_first_of("\t ,") != std::string_view::npos;
      if (quotes) *at++ = '"';
      put(text);
      if (quotes) *at++ = '"';
    }
    *at++ = '\n';
  }
  flush();
  return ::close(file) == 0 && good;
}

}  // namespace optxv::bench
