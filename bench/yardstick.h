// The yardstick: the fastest typed option reader that a page or two of plain C++ gives.
//
// It reads the part of the two languages that the benchmarks use, does all that such input asks for
// (every field of a record is kept, every value is converted, checked and stored, every fault is
// counted and the first 5,000 are kept as text) and nothing more: no modes, no macros, no lists, no
// record of what was set when. What the library costs beyond it is the price of what it does beyond
// it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace optxv::bench {

class yardstick {
 public:
  enum class type : std::uint8_t { integer, real, text, boolean, enumerated };
  union number {
    std::int32_t integer;  ///< of an enumerated option the position of the item, of a text in texts
    double real;
  };
  /// One more line of an option: an item of an enumeration, or a line of help.
  struct lineof {
    std::string_view name, help;
    std::int32_t hc;
  };
  struct row {
    std::string_view name, help;
    number value, standard, low, high;
    std::int32_t usermap, hc, group;
    std::uint32_t firstline, lines;
    type kind;
    bool defined;
  };
  struct section {
    std::string_view name, help;
    std::int32_t groupnr, hc;
  };

  bool readdefinition(const char* filename);
  bool readparameters(const char* filename);
  bool write(const char* filename) const;

  /// The position of the option from 0, or -1.
  [[gnu::noinline]] std::int32_t find(const char* name) const;
  /// The value of an integer or boolean option; false on a bad position or another kind.
  [[gnu::noinline]] bool getinteger(std::int32_t position, std::int32_t& value) const;

  const std::vector<row>& options() const { return options_; }
  const std::vector<section>& groups() const { return groups_; }
  const std::vector<lineof>& lines() const { return lines_; }
  std::string_view textvalue(const row& option) const;
  std::size_t errors() const { return errors_; }
  void clearerrors();

 private:
  struct scanner;
  struct slot {
    std::uint32_t hash;
    std::int32_t position;
  };
  std::string_view keep(std::string_view text);
  void record(scanner& line);
  void continued(scanner& line);
  void enter(std::string_view name, std::uint32_t hash);
  std::int32_t probe(std::string_view name, std::uint32_t hash) const;
  void assignment(scanner& line);
  bool assign(row& option, std::string_view value);
  void fault(std::string_view what, std::string_view name);

  std::vector<row> options_;
  std::vector<lineof> lines_;
  std::vector<section> groups_;
  std::vector<std::string> texts_;
  std::vector<slot> slots_;
  std::vector<std::unique_ptr<char[]>> blocks_;  ///< what keep() fills
  char* free_ = nullptr;
  std::size_t room_ = 0;
  std::array<bool, 256> comment_{};
  std::vector<std::string> messages_;
  std::size_t errors_ = 0, linenumber_ = 0;
};

}  // namespace optxv::bench
