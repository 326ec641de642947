// The groups of benchmarks beside the option functions: classes that a program in C++ links to.
#pragma once

#include <vector>

#include "report.h"

namespace optxv::bench {

/// The pools of names, beside a map of the standard library.
void registerpools();
std::vector<target> pooltargets();

/// The pool allocator, beside the C library's.
void registerheap();
std::vector<target> heaptargets();

/// The data stores, at growing sizes and beside the standard library.
void registerstores();
std::vector<target> storetargets();

}  // namespace optxv::bench
