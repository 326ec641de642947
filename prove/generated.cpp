// The code that the command generates for C and for C++, and the header for C++, called as a
// program would; see walk.h.

#include <new>

#include "optxv/optxv.hpp"
#include "solver_options.h"
#include "solver_options.hpp"
#include "walk.h"

namespace {

using namespace walk;

constexpr const char* changes = "time_limit 7\nthreads 3\nlog_file other.log\nread_path /more\n";

/// A call of C++, where memory that ran out is an exception.
template <class Act>
call thrown(const char* name, Act act) {
  return {name, promise::thrown, [act](optxv_handle& handle, outcome& out) -> std::int32_t {
            optxv::options options = optxv::options::adopt(handle);
            std::int32_t status = 0;
            try {
              status = act(options, out);
            } catch (const std::bad_alloc&) {
              status = ENOMEM;
            }
            handle = options.release();
            return status;
          }};
}

/// Changes what is set, as a program does, and sets it.
std::int32_t changed(optxv_handle handle, outcome& out) {
  struct solver_options values;
  const std::int32_t filled = solver_fill(&values, handle);
  if (filled != 0) return filled;
  out.put(values.time_limit);
  values.time_limit = 77;
  values.presolve = !values.presolve;
  std::strcpy(values.log_file, "a longer name of the log file than there was before.log");
  values.method = SOLVER_METHOD_DUAL;
  return solver_apply(&values, handle);
}

const std::vector<call> calls = {
    {"C: the definition in the code", promise::status,
     [](optxv_handle& handle, outcome& out) {
       const std::int32_t status = solver_read_definition(handle);
       out.put(optxv_option_count(handle) > 0 ? 1 : 0);
       return status;
     }},
    {"C: fill and apply", promise::status,
     [](optxv_handle& handle, outcome& out) { return changed(handle, out); }},
    {"C: items of a list", promise::status,
     [](optxv_handle& handle, outcome& out) {
       optxv_text item;
       for (std::int32_t i = 1; i <= solver_read_path_count(handle); i++)
         if (solver_read_path_item(handle, i, &item) == 1) out.put(item);
       return 0;
     }},
    thrown("C++: fill and apply",
           [](optxv::options& options, outcome& out) {
             solver::options values;
             if (const std::int32_t filled = solver::fill(values, options); filled != 0)
               return filled;
             out.put(values.log_file);
             values.log_file = "a longer name of the log file than there was before.log";
             values.threads = 5;
             return solver::apply(values, options);
           }),
    thrown("C++: a definition from text",
           [](optxv::options&, outcome& out) {
             const optxv::options made =
                 optxv::options::from_text("some integer 1 1 0 9 1 1 Some\n");
             out.put(static_cast<std::int64_t>(made.table().size()));
             return 0;
           }),
    thrown("C++: reads",
           [](optxv::options& options, outcome& out) {
             out.put(options.read_text("changes", changes).errors);
             out.put(options.read_line("nosuch 1").errors);
             for (const optxv::message& each : options.messages()) out.put(each.shown);
             return 0;
           }),
    thrown("C++: values",
           [](optxv::options& options, outcome& out) {
             out.put(options.get<std::string>("log_file"));
             options.set("log_file", std::string(100, 'x'));
             out.put(options.parse("read_path", "/parsed").errors);
             out.put(options.shown("time_limit"));
             for (const std::string_view each : options.list("read_path")) out.put(each);
             return 0;
           }),
    thrown("C++: snapshots and text",
           [](optxv::options& options, outcome& out) {
             const auto before = options.take_snapshot();
             options.reset_all();
             options.restore(before);
             out.put(options.to_text());
             return 0;
           }),
};

}  // namespace

int main(int argc, char** argv) {
  return walk::run(calls, argc, argv);
}
