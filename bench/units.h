// The groups of benchmarks that have files of their own: the classes that a program in C++ links
// to, and generated code.
#pragma once

#include <vector>

#include "optxv/optxv.hpp"
#include "report.h"

namespace optxv::bench {

/// The pools of names, compared with a map of the standard library.
void registerpools();
std::vector<target> pooltargets();

/// The pool allocator, compared with the C library's.
void registerheap();
std::vector<target> heaptargets();

/// Generated code, filled from options that have read the table of 2,700, and live as long as the
/// run.
void registerfilling(const options& library);
std::vector<target> filltargets();

/// The data stores, at growing sizes and compared with the standard library.
void registerstores();
std::vector<target> storetargets();

}  // namespace optxv::bench
