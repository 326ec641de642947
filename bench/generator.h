// Option tables and parameter text for the benchmarks: random, but the same for the same seed.
//
// A table looks like that of a large solver: long names made of words, two fifths integers, a
// third switches, a line of help on each option.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace optxv::bench {

/// The seed of every table that is measured.
inline constexpr std::uint32_t tableseed = 20260101;

/// One option as the definition declares it, with parameter text that fits it and text that does
/// not.
struct generatedoption {
  std::string name;
  std::string record;              ///< what follows the name in the definition
  std::vector<std::string> below;  ///< the continuation lines, without their leading blank
  std::string value;               ///< a legal value, not the default
  std::string fault;               ///< a value that is refused; empty where all are taken
  bool isinteger = false, numeric = false;
};

/// The options of a table of that size. Names differ without regard to case.
std::vector<generatedoption> generatetable(std::size_t count, std::uint32_t seed);

/// The definition file of a table: the comment character '#', the groups, the options.
std::string definitiontext(const std::vector<generatedoption>& table);

/// `lines` assignments in random order: each option once before any is repeated.
std::string parametertext(const std::vector<generatedoption>& table, std::size_t lines,
                          std::uint32_t seed);

/// As parametertext, but each line is faulty: an unknown name, or a value that is refused.
std::string faultytext(const std::vector<generatedoption>& table, std::size_t lines,
                       std::uint32_t seed);

/// The options that hold a number or a switch.
std::vector<generatedoption> numericpart(const std::vector<generatedoption>& table);

/// `lines` entries of the attribute .scale with two labels each.
std::string dottext(std::size_t lines, std::uint32_t seed);

}  // namespace optxv::bench
