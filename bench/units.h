// The groups of benchmarks other than the option functions: classes that a program in C++ links to.
#pragma once

#include <vector>

#include "report.h"

namespace optxv::bench {

/// The pools of names, compared with a map of the standard library.
void registerpools();
std::vector<target> pooltargets();

/// The pool allocator, compared with the C library's.
void registerheap();
std::vector<target> heaptargets();

/// The data stores, at growing sizes and compared with the standard library.
void registerstores();
std::vector<target> storetargets();

}  // namespace optxv::bench
